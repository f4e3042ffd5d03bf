#pragma once

#include <windows.h>
// after windows.h
#include <oleauto.h>

#include "project/CFiles.h"

namespace bxvbwiz {

// A host's file record: any automation object with the properties FileName, Destination, SharedFile,
// SelfRegister, FileLinkPath, LinkResolves and FileGroup, read and written by name.

// Reads the seven properties; `argument` names the method's parameter in errors. Throws ComError: Nothing, a
// property that is missing, cannot be read or has the wrong type.
CFile ReadFileRecord(IDispatch* object, const char* argument);
// Writes all six installation facts: a property of a new object may be Empty. Throws ComError.
void WriteFileRecord(IDispatch* object, const char* argument, const CFile& file);

}  // namespace bxvbwiz
