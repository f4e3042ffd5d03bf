#pragma once

#include <windows.h>
// after windows.h
#include <oleauto.h>

#include <utility>

namespace bxvbwiz {

// A counted reference to an object; null is none.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Adds a reference.
  explicit ComPtr(Interface* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_ != nullptr) object_->Release();
  }

  Interface* Get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  // Where a call puts a new reference. Releases the one that is held.
  Interface** Receive() {
    *this = ComPtr();
    return &object_;
  }
  void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

 private:
  Interface* object_ = nullptr;
};

// A variant, cleared with its owner.
class OwnedVariant : public VARIANT {
 public:
  OwnedVariant() { VariantInit(this); }
  OwnedVariant(OwnedVariant&& other) noexcept {
    static_cast<VARIANT&>(*this) = other;
    VariantInit(&other);
  }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  ~OwnedVariant() { VariantClear(this); }
};

}  // namespace bxvbwiz
