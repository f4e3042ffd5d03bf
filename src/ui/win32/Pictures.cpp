#include "ui/win32/Pictures.h"

#include "setupgen/TreeNode.h"

namespace bxvbwiz {

namespace {

// Numbers of Icon.rc and Pictures.rc.
constexpr int kWizardIcon = 1;
constexpr int kFirstNodeIcon = 10;

OwnedIcon Load(HINSTANCE module, int number, int size) {
  return OwnedIcon(
      static_cast<HICON>(LoadImageW(module, MAKEINTRESOURCEW(number), IMAGE_ICON, size, size, 0)));
}

}  // namespace

OwnedImageList LoadNodeImages(HINSTANCE module) {
  constexpr int kCount = static_cast<int>(NodeImage::FileGroup) + 1;
  const int size = GetSystemMetrics(SM_CXSMICON);
  OwnedImageList images(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, kCount, 0));
  for (int image = 0; image < kCount; ++image) {
    ImageList_ReplaceIcon(images.get(), -1, Load(module, kFirstNodeIcon + image, size).get());
  }
  return images;
}

OwnedIcon LoadWizardIcon(HINSTANCE module, int size) {
  return Load(module, kWizardIcon, size);
}

}  // namespace bxvbwiz
