#pragma once

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <memory>
#include <utility>

// Owners of what a window is made of. Each counts in a ledger what it holds open, so that a test sees what is
// left over.
namespace bxvbwiz {

// What is open at present, all owners of one ledger together.
struct OpenObjects {
  int windows = 0;
  int fonts = 0;
  int images = 0;  // image lists, icons and bitmaps
  int contexts = 0;

  int Total() const { return windows + fonts + images + contexts; }
};

using Ledger = std::shared_ptr<OpenObjects>;

// A handle that is closed with its owner. Traits: Handle, Count (a member of OpenObjects), Close.
template <typename Traits>
class Owned {
 public:
  using Handle = typename Traits::Handle;

  Owned() = default;
  // Takes the handle over; null is none.
  Owned(Ledger ledger, Handle handle) : ledger_(std::move(ledger)), handle_(handle) {
    if (handle_ != nullptr) ++((*ledger_).*Traits::kCount);
  }
  Owned(Owned&& other) noexcept
      : ledger_(std::move(other.ledger_)), handle_(std::exchange(other.handle_, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(ledger_, other.ledger_);
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Owned() { Reset(); }

  void Reset() {
    if (handle_ == nullptr) return;
    Traits::Close(std::exchange(handle_, nullptr));
    --((*ledger_).*Traits::kCount);
  }
  Handle Get() const { return handle_; }

 private:
  Ledger ledger_;
  Handle handle_ = nullptr;
};

struct WindowTraits {
  using Handle = HWND;
  static constexpr int OpenObjects::*kCount = &OpenObjects::windows;
  static void Close(HWND window) { DestroyWindow(window); }
};
struct FontTraits {
  using Handle = HFONT;
  static constexpr int OpenObjects::*kCount = &OpenObjects::fonts;
  static void Close(HFONT font) { DeleteObject(font); }
};
struct ImageListTraits {
  using Handle = HIMAGELIST;
  static constexpr int OpenObjects::*kCount = &OpenObjects::images;
  static void Close(HIMAGELIST images) { ImageList_Destroy(images); }
};
struct IconTraits {
  using Handle = HICON;
  static constexpr int OpenObjects::*kCount = &OpenObjects::images;
  static void Close(HICON icon) { DestroyIcon(icon); }
};
struct BitmapTraits {
  using Handle = HBITMAP;
  static constexpr int OpenObjects::*kCount = &OpenObjects::images;
  static void Close(HBITMAP bitmap) { DeleteObject(bitmap); }
};
struct ScreenContextTraits {
  using Handle = HDC;
  static constexpr int OpenObjects::*kCount = &OpenObjects::contexts;
  static void Close(HDC context) { ReleaseDC(nullptr, context); }
};

using OwnedWindow = Owned<WindowTraits>;
using OwnedFont = Owned<FontTraits>;
using OwnedImageList = Owned<ImageListTraits>;
using OwnedIcon = Owned<IconTraits>;
using OwnedBitmap = Owned<BitmapTraits>;
using OwnedScreenContext = Owned<ScreenContextTraits>;

}  // namespace bxvbwiz
