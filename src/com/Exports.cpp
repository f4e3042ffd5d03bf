#include "com/ClassFactory.h"
#include "com/ComError.h"
#include "com/Registration.h"

using bxvbwiz::ClassFactory;
using bxvbwiz::ServerClass;

// What the system and regsvr32 call; Bx6vbwiz.def exports them by their plain names.

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, LPVOID* object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  for (const ServerClass& entry : bxvbwiz::kServerClasses) {
    if (*entry.id != classId) continue;
    bxvbwiz::StayLoaded();
    try {
      bxvbwiz::ComPtr<IClassFactory> factory;
      *factory.Receive() = new ClassFactory(bxvbwiz::Server::OfThisThread(), entry);
      return factory->QueryInterface(interfaceId, object);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (...) {
      return bxvbwiz::LeaveException({}, "BX6VBWiz", interfaceId);  // the server's start failed
    }
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  return bxvbwiz::ModuleIsInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return bxvbwiz::RegisterServer();
}

STDAPI DllUnregisterServer() {
  return bxvbwiz::UnregisterServer();
}
