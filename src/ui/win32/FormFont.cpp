#include "ui/win32/FormFont.h"

#include <algorithm>
#include <cstdlib>

#include "support/basParse.h"
#include "text/Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {

namespace {

constexpr int kPointsAnInch = 72;
constexpr int kDesignResolution = 96;
constexpr const char* kBitmapFont = "MS Sans Serif";
constexpr const char* kOutlineFont = "Microsoft Sans Serif";

std::string ItemOf(const std::string& description, const char* name, const char* otherwise) {
  bool found = false;
  const std::optional<std::string> item = GetItem(description, name, found);
  return item.has_value() && !item->empty() ? *item : otherwise;
}

int NumberOf(const std::string& description, const char* name, const char* otherwise) {
  return static_cast<int>(std::strtol(ItemOf(description, name, otherwise).c_str(), nullptr, 10));
}

// A font selected into a context while this lives.
class Selected {
 public:
  Selected(HDC context, HFONT font) : context_(context), previous_(SelectObject(context, font)) {}
  ~Selected() { SelectObject(context_, previous_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ previous_;
};

SIZE Extent(const Ledger& ledger, HFONT font, const std::wstring& text) {
  const OwnedScreenContext screen(ledger, GetDC(nullptr));
  const Selected selected(screen.Get(), font);
  SIZE extent{};
  GetTextExtentPoint32W(screen.Get(), text.c_str(), static_cast<int>(text.size()), &extent);
  return extent;
}

}  // namespace

int ScreenResolution(const Ledger& ledger) {
  const OwnedScreenContext screen(ledger, GetDC(nullptr));
  return GetDeviceCaps(screen.Get(), LOGPIXELSY);
}

FormFont::FormFont(const Ledger& ledger, const std::string& description) : ledger_(ledger) {
  const int resolution = ScreenResolution(ledger);
  std::string name = ItemOf(description, "Name", "MS Shell Dlg");
  // The bitmap font has few sizes, which a finer screen would stretch; its outline sister has the same
  // widths.
  if (resolution != kDesignResolution && EqualsIgnoreCase(name, kBitmapFont)) name = kOutlineFont;
  const int size = std::max(1, NumberOf(description, "Size", "8"));
  LOGFONTW font{};
  font.lfHeight = -MulDiv(size, resolution, kPointsAnInch);
  font.lfWeight = NumberOf(description, "Bold", "0") != 0 ? FW_BOLD : FW_NORMAL;
  font.lfItalic = NumberOf(description, "Italic", "0") != 0 ? TRUE : FALSE;
  font.lfCharSet = DEFAULT_CHARSET;
  Widen(name).copy(font.lfFaceName, LF_FACESIZE - 1);
  font_ = OwnedFont(ledger, CreateFontIndirectW(&font));

  // As the system's dialog manager reckons them.
  const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const SIZE extent = Extent(ledger, font_.Get(), letters);
  const auto count = static_cast<LONG>(letters.size());
  base_.cx = std::max<LONG>(1, (extent.cx + count / 2) / count);
  base_.cy = std::max<LONG>(1, extent.cy);
}

int FormFont::TextWidth(const std::string& text) const {
  return Extent(ledger_, font_.Get(), Widen(text)).cx;
}

int FormFont::Horizontal(int units) const {
  return MulDiv(units, base_.cx, 4);
}

int FormFont::Vertical(int units) const {
  return MulDiv(units, base_.cy, 8);
}

RECT FormFont::Pixels(const Place& place) const {
  return {Horizontal(place.x), Vertical(place.y), Horizontal(place.x + place.width),
          Vertical(place.y + place.height)};
}

}  // namespace bxvbwiz
