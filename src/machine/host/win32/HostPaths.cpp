#include "machine/host/win32/HostPaths.h"

#include <windows.h>

#include <algorithm>

#include "text/win32/WideText.h"

namespace bxvbwiz::host {
namespace {

constexpr std::wstring_view kLongPath = L"\\\\?\\";
constexpr std::wstring_view kLongNetworkPath = L"\\\\?\\UNC\\";
constexpr std::size_t kLongFolder = MAX_PATH - 12;  // CreateDirectoryW leaves room for a name of 8.3

}  // namespace

std::wstring SystemPath(const std::string& path) {
  std::wstring wide = Widen(path);
  std::replace(wide.begin(), wide.end(), L'/', L'\\');
  if (wide.size() < kLongFolder || wide.compare(0, kLongPath.size(), kLongPath) == 0) return wide;
  if (wide.compare(0, 2, L"\\\\") == 0) return std::wstring(kLongNetworkPath).append(wide, 2);
  return std::wstring(kLongPath).append(wide);
}

std::string HostPath(std::wstring path) {
  if (path.compare(0, kLongNetworkPath.size(), kLongNetworkPath) == 0) {
    path.replace(0, kLongNetworkPath.size(), L"\\\\");
  } else if (path.compare(0, kLongPath.size(), kLongPath) == 0) {
    path.erase(0, kLongPath.size());
  }
  std::replace(path.begin(), path.end(), L'\\', L'/');
  return Narrow(path);
}

}  // namespace bxvbwiz::host
