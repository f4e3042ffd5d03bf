#pragma once

#include <windows.h>
// after windows.h
#include <unknwn.h>

#include <memory>

#include "com/Classes.h"
#include "com/Module.h"

namespace bxvbwiz {

// Makes the objects of one class. It keeps its thread's server while it lives. Made with one reference.
class ClassFactory : public IClassFactory {
 public:
  ClassFactory(std::shared_ptr<Server> server, const ServerClass& made)
      : server_(std::move(server)), class_(made) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;
  virtual ~ClassFactory() = default;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  const ModuleUse use_;  // goes last
  const std::shared_ptr<Server> server_;
  const ServerClass& class_;
  LONG references_ = 1;
};

}  // namespace bxvbwiz
