#include "com/Server.h"

#include <cstring>

#include "com/ComError.h"
#include "com/LogMonitor.h"
#include "com/Module.h"
#include "support/basStr.h"
#include "ui/win32/Win32View.h"
#include "wizard/SubMain.h"

namespace bxvbwiz {
namespace {

// Not owned: the objects and factories that the thread made own it, and another thread may let the last go.
thread_local std::weak_ptr<Server> serverOfThread;

}  // namespace

// A failed step is retried once: more would not help.
Button UserWithoutForm::Display(const Message& message) {
  lastMessage_ = message.text;
  switch (message.style & kButtonsOfStyle) {
    case kStyleRetryCancel:
      return std::exchange(retried_, true) ? Button::Cancel : Button::Retry;
    case kStyleYesNo:
      return Button::No;
    default:
      return Button::Ok;
  }
}

void UserWithoutForm::BeginCall() {
  lastMessage_.clear();
  retried_ = false;
}

std::shared_ptr<Server> Server::OfThisThread() {
  if (std::shared_ptr<Server> known = serverOfThread.lock()) return known;
  auto server = std::make_shared<Server>();
  serverOfThread = server;
  SubMain(server->formHost_, "",
          [&server] { server->logMonitor_ = MakeLogMonitor(server->core_.session()); });
  return server;
}

Server::Server()
    : platform_(ThisModule()),
      core_(platform_.platform(), StartMode::Automation),
      formHost_(core_, [](frmMain& form) { return MakeWin32View(form, ThisModule()); }) {
  formHost_.SetUserWithoutForm(&user_);
}

bool Server::IdOrder::operator()(const GUID& left, const GUID& right) const {
  return std::memcmp(&left, &right, sizeof left) < 0;
}

ITypeInfo& Server::TypeInfo(REFGUID id) {
  const auto known = typeInfos_.find(id);
  if (known != typeInfos_.end()) return *known->second.Get();
  HRESULT code = S_OK;
  // By its full path, and without touching the registration.
  if (!typeLibrary_) code = LoadTypeLibEx(ThisModulePath().c_str(), REGKIND_NONE, typeLibrary_.Receive());
  ComPtr<ITypeInfo> info;
  if (SUCCEEDED(code)) code = typeLibrary_->GetTypeInfoOfGuid(id, info.Receive());
  if (FAILED(code)) throw ComError(code, "The server's type library cannot be read");
  return *typeInfos_.emplace(id, info).first->second.Get();
}

HRESULT Server::TakeException(const char* source, REFIID interfaceId) noexcept {
  return LeaveException(user_.LastMessage(), source, interfaceId);
}

void Server::EndCall() noexcept {
  try {
    formHost_.UnloadEndedForm();
  } catch (...) {
    // The call already has its result.
  }
}

}  // namespace bxvbwiz
