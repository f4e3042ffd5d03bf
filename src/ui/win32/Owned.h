#pragma once

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <memory>

// Owners of what a window is made of.
namespace bxvbwiz {

struct Closer {
  void operator()(HWND window) const { DestroyWindow(window); }
  void operator()(HICON icon) const { DestroyIcon(icon); }
  void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
};

template <class Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Closer>;
using OwnedWindow = Owned<HWND>;
using OwnedIcon = Owned<HICON>;
using OwnedImageList = Owned<HIMAGELIST>;

}  // namespace bxvbwiz
