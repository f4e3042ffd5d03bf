// Defines the identifiers that the type library's header declares.
#include <initguid.h>
// after initguid.h
#include "com/BX6VBWiz.h"
