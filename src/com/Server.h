#pragma once

#include <map>
#include <memory>
#include <string>

#include "com/ComPtr.h"
#include "support/basLogging.h"
#include "win32/Win32Platform.h"
#include "wizard/FormHost.h"

namespace bxvbwiz {

// The user while no form is loaded. A message box would stop the host, so a message is kept for the error
// that the host gets instead.
class UserWithoutForm : public User {
 public:
  void BeginCall();
  const std::string& LastMessage() const { return lastMessage_; }

 private:
  Button Display(const Message& message) override;

  std::string lastMessage_;
  bool retried_ = false;
};

// The wizard with its session and the type library, for the objects and factories of one thread. Each thread
// has its own, so that their calls do not meet.
class Server {
 public:
  // The calling thread's, made when there is none. Throws when it cannot start.
  static std::shared_ptr<Server> OfThisThread();

  Server();
  ~Server() = default;
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  WizardCore& core() { return core_; }
  FormHost& formHost() { return formHost_; }
  // The description of an interface or class of the type library. Throws ComError.
  ITypeInfo& TypeInfo(REFGUID id);

  // Around every call of a host.
  void BeginCall() { user_.BeginCall(); }
  // Leaves an error object for the exception that is being handled and gives its code.
  HRESULT TakeException(const char* source, REFIID interfaceId) noexcept;
  // Unloads a wizard that has ended during the call.
  void EndCall() noexcept;

 private:
  struct IdOrder {
    bool operator()(const GUID& left, const GUID& right) const;
  };

  Win32Platform platform_;
  UserWithoutForm user_;
  WizardCore core_;
  FormHost formHost_;
  ComPtr<IDispatch> logMonitor_;
  ComPtr<ITypeLib> typeLibrary_;
  std::map<GUID, ComPtr<ITypeInfo>, IdOrder> typeInfos_;
};

}  // namespace bxvbwiz
