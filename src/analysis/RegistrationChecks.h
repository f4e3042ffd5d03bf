#pragma once

#include "analysis/AuditSubject.h"

// Checks of what the files themselves say of their registration.
namespace bxvbwiz {

// Files for another kind of processor than the program.
void TellOtherMachines(const AuditSubject& subject);
// Libraries that cannot register themselves, or that could but are not registered.
void TellUnregistrable(const AuditSubject& subject);
// Programs that offer objects, which no file group registers.
void TellUnregisteredServers(const AuditSubject& subject);

// Whether the file's name ends in one of these; `endings` are in upper case.
bool EndsInOneOf(const std::string& file, std::initializer_list<std::string_view> endings);
// Whether it is a type library that is no program file.
inline bool IsBareTypeLibrary(const std::string& file) {
  return EndsInOneOf(file, {".TLB", ".OLB"});
}

}  // namespace bxvbwiz
