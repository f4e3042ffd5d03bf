#pragma once

#include <map>
#include <memory>
#include <string>

#include "com/ComPtr.h"
#include "support/basLogging.h"
#include "win32/Win32Platform.h"
#include "wizard/Component.h"

namespace bxvbwiz {

// Whom the wizard's classes speak to while no form is loaded. A message box of a server would stop its host,
// so a message is kept for the error that the host gets instead.
class UserWithoutForm : public User {
 public:
  Button ShowMessage(const Message& message) override;
  void ShowStatus(const std::string&) override {}
  void AdvanceProgress() override {}
  void SetPointer(Pointer) override {}
  void DoEvents() override {}
  void SetReturnCode(std::int16_t) override {}
  void WizardHasEnded() override {}

  void BeginCall();
  const std::string& LastMessage() const { return lastMessage_; }

 private:
  std::string lastMessage_;
  bool retried_ = false;
};

// What lives while an object or a factory of one thread does: the component with its session, and the type
// library. Each thread has its own, so that no call meets another's.
class Server {
 public:
  // The calling thread's, made when there is none. Throws what its start fails with.
  static std::shared_ptr<Server> OfThisThread();

  Server();
  ~Server() = default;
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  Component& component() { return component_; }
  // The description of an interface or class of the type library. Throws ComError.
  ITypeInfo& TypeInfo(REFGUID id);

  // Around every call of a host.
  void BeginCall() { user_.BeginCall(); }
  // Leaves an error object for the exception that is being handled and gives its code.
  HRESULT TakeException(const char* source, REFIID interfaceId) noexcept;
  // Lets go of a wizard that the call ended.
  void EndCall() noexcept;

 private:
  struct IdOrder {
    bool operator()(const GUID& left, const GUID& right) const;
  };

  Win32Platform platform_;
  UserWithoutForm user_;
  Component component_;
  ComPtr<IDispatch> logMonitor_;
  ComPtr<ITypeLib> typeLibrary_;
  std::map<GUID, ComPtr<ITypeInfo>, IdOrder> typeInfos_;
};

}  // namespace bxvbwiz
