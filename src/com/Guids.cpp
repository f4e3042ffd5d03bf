// Defines the identifiers that the type library's header and the script engines' header declare.
#include <initguid.h>
// after initguid.h
#include <dispex.h>

#include "com/BX6VBWiz.h"
