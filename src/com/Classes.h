#pragma once

#include <memory>

#include "com/ComPtr.h"
#include "com/Server.h"

namespace bxvbwiz {

// A creatable class of the server.
struct ServerClass {
  const CLSID* id;
  const wchar_t* progId;
  const wchar_t* description;
  // Makes an object with one reference. Throws.
  IDispatch* (*make)(std::shared_ptr<Server> server);
};

constexpr std::size_t kServerClassCount = 4;
extern const ServerClass kServerClasses[kServerClassCount];

IDispatch* MakeApplication(std::shared_ptr<Server> server);
IDispatch* MakeSystemInfo(std::shared_ptr<Server> server);
IDispatch* MakeFileGroups(std::shared_ptr<Server> server);
IDispatch* MakeComponents(std::shared_ptr<Server> server);

}  // namespace bxvbwiz
