#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace bxvbwiz {

// The error that a method gives its host.
class ComError : public std::runtime_error {
 public:
  ComError(HRESULT code, const std::string& text) : std::runtime_error(text), code_(code) {}
  HRESULT Code() const { return code_; }

 private:
  HRESULT code_;
};

// The code by which a Visual Basic host reads this run-time error's number.
HRESULT RunTimeErrorCode(long number);

// Leaves an error object for the caller's thread. Gives `code`.
HRESULT LeaveError(HRESULT code, const std::string& text, const char* source, REFIID interfaceId) noexcept;

// Leaves an error object for the exception that is being handled and gives its code. `message` is the text of
// a wizard that has ended, or empty. Gives E_OUTOFMEMORY or E_UNEXPECTED, without an error object, when even
// that fails.
HRESULT LeaveException(const std::string& message, const char* source, REFIID interfaceId) noexcept;

}  // namespace bxvbwiz
