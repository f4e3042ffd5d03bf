#pragma once

#include <windows.h>

#include <string>

#include "ui/win32/Owned.h"

namespace bxvbwiz {

// A place in dialog units: a quarter of the average width and an eighth of the height of the font's letters.
struct Place {
  int x, y, width, height;
};

// The font of all controls, and the dialog units that follow from it.
class FormFont {
 public:
  // From a description like "Name=MS Sans Serif;Bold=0;Italic=0;Size=8"; what it lacks is taken from the
  // system's dialog font, 8 points. The size follows the screen's resolution.
  FormFont(const Ledger& ledger, const std::string& description);

  HFONT Get() const { return font_.Get(); }
  // In pixels.
  int TextWidth(const std::string& text) const;
  int Horizontal(int units) const;
  int Vertical(int units) const;
  RECT Pixels(const Place& place) const;

 private:
  Ledger ledger_;
  OwnedFont font_;
  SIZE base_{};  // pixels of four horizontal and eight vertical units
};

// Dots an inch of the screen, as this process sees it.
int ScreenResolution(const Ledger& ledger);

}  // namespace bxvbwiz
