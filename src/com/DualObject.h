#pragma once

#include <ocidl.h>

#include <memory>
#include <string>
#include <utility>

#include "com/ComError.h"
#include "com/ComText.h"
#include "com/Dispatch.h"
#include "com/Module.h"
#include "com/Server.h"

namespace bxvbwiz {

// An automation object with one dual interface, of a class of the type library. It keeps its thread's server
// while it lives. Made with one reference.
template <class Interface, const IID& kInterface, const CLSID& kClass>
class DualObject : public Interface, public ISupportErrorInfo, public IProvideClassInfo {
 public:
  // `source` names the class in errors; a literal.
  DualObject(std::shared_ptr<Server> server, const char* source)
      : server_(std::move(server)), source_(source) {}
  DualObject(const DualObject&) = delete;
  DualObject& operator=(const DualObject&) = delete;
  virtual ~DualObject() = default;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch || id == kInterface) {
      *object = static_cast<Interface*>(this);
    } else if (id == IID_ISupportErrorInfo) {
      *object = static_cast<ISupportErrorInfo*>(this);
    } else if (id == IID_IProvideClassInfo) {
      *object = static_cast<IProvideClassInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
      references_ = 1;  // what runs while it goes must not let it go again
      delete this;
    }
    return static_cast<ULONG>(left);
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return index == 0 ? GiveTypeInfo(kInterface, info) : DISP_E_BADINDEX;
  }
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr) return E_INVALIDARG;
    return Guard([&] { return DispGetIDsOfNames(&server_->TypeInfo(kInterface), names, count, ids); });
  }
  STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
    if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    const ComPtr<IUnknown> self(static_cast<Interface*>(this));
    SetErrorInfo(0, nullptr);
    return Guard([&] {
      return InvokeTyped(server_->TypeInfo(kInterface), static_cast<Interface*>(this), member, locale, flags,
                         parameters, result, exception, wrongArgument);
    });
  }

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override { return id == kInterface ? S_OK : S_FALSE; }
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return GiveTypeInfo(kClass, info);
  }

 protected:
  Server& server() { return *server_; }

  // Runs a method's work. Its exception becomes an error code with an error object.
  template <class Work>
  HRESULT Call(Work&& work) noexcept {
    // A callback may release what is running.
    const ComPtr<IUnknown> self(static_cast<Interface*>(this));
    const std::shared_ptr<Server> server = server_;
    const SessionScope scope(server->core().session());
    server->BeginCall();
    const HRESULT result = Guard([&] {
      work();
      return S_OK;
    });
    server->EndCall();
    return result;
  }

  // Runs a method that gives something; `result` is where the caller wants it.
  template <class Result, class Work>
  HRESULT Give(Result* result, Work&& work) noexcept {
    if (result == nullptr) return LeaveError(E_POINTER, "The result has no place", source_, kInterface);
    *result = Result();
    return Call([&] { Store(*result, work()); });
  }

  // A text argument; `name` is the parameter's. Throws ComError for a null pointer.
  static std::string Text(const BSTR* argument, const char* name) {
    if (argument == nullptr) throw ComError(E_POINTER, "The argument " + std::string(name) + " is null");
    return FromBstr(*argument);
  }

 private:
  template <class Work>
  HRESULT Guard(Work&& work) noexcept {
    try {
      return work();
    } catch (...) {
      return server_->TakeException(source_, kInterface);
    }
  }

  HRESULT GiveTypeInfo(REFGUID id, ITypeInfo** info) {
    return Guard([&] {
      *info = &server_->TypeInfo(id);
      (*info)->AddRef();
      return S_OK;
    });
  }

  static void Store(BSTR& target, const std::string& text) { target = ToBstr(text); }
  static void Store(VARIANT_BOOL& target, bool isSo) { target = isSo ? VARIANT_TRUE : VARIANT_FALSE; }
  static void Store(VARIANT_BOOL& target, std::int16_t number) { target = number; }
  static void Store(LONG& target, std::int32_t number) { target = number; }

  const ModuleUse use_;  // goes last
  const std::shared_ptr<Server> server_;
  const char* source_;
  LONG references_ = 1;
};

}  // namespace bxvbwiz
