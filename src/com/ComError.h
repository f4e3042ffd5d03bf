#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace bxvbwiz {

// What a method fails with at the boundary to the host.
class ComError : public std::runtime_error {
 public:
  ComError(HRESULT code, const std::string& text) : std::runtime_error(text), code_(code) {}
  HRESULT Code() const { return code_; }

 private:
  HRESULT code_;
};

// A run-time error's number as Visual Basic hands it to a host, which reads the same number.
HRESULT RunTimeErrorCode(long number);

// Leaves an error object for the caller's thread. Gives `code`.
HRESULT LeaveError(HRESULT code, const std::string& text, const char* source, REFIID interfaceId) noexcept;

// Leaves an error object for the exception that is being handled and gives its code. `message` is the text of
// a wizard that has ended; empty when it said nothing. Gives E_OUTOFMEMORY or E_UNEXPECTED, without an error
// object, where even that is too much.
HRESULT LeaveException(const std::string& message, const char* source, REFIID interfaceId) noexcept;

}  // namespace bxvbwiz
