#pragma once

#include <windows.h>

#include <utility>

namespace bxvbwiz {

// A kernel object's handle, closed with its owner. Both null and INVALID_HANDLE_VALUE mean that there is
// none.
class OwnedHandle {
 public:
  OwnedHandle() = default;
  explicit OwnedHandle(HANDLE handle) : handle_(handle) {}
  OwnedHandle(OwnedHandle&& other) noexcept : handle_(other.Release()) {}
  OwnedHandle& operator=(OwnedHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~OwnedHandle() {
    if (Valid()) CloseHandle(handle_);
  }

  bool Valid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }
  HANDLE Release() { return std::exchange(handle_, nullptr); }

 private:
  HANDLE handle_ = nullptr;
};

// A search for files.
class OwnedSearch {
 public:
  explicit OwnedSearch(HANDLE search) : search_(search) {}
  ~OwnedSearch() {
    if (Valid()) FindClose(search_);
  }
  OwnedSearch(const OwnedSearch&) = delete;
  OwnedSearch& operator=(const OwnedSearch&) = delete;

  bool Valid() const { return search_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return search_; }

 private:
  HANDLE search_;
};

}  // namespace bxvbwiz
