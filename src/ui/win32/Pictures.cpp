#include "ui/win32/Pictures.h"

#include <algorithm>
#include <vector>

namespace bxvbwiz {

namespace {

// A picture is drawn on a square of so many units.
constexpr double kGrid = 16;

struct Point {
  double x, y;
};

// A filled polygon.
struct Shape {
  Shape(COLORREF fill, std::vector<Point> corners) : color(fill), points(std::move(corners)) {
    for (const Point& corner : points) {
      least = {std::min(least.x, corner.x), std::min(least.y, corner.y)};
      most = {std::max(most.x, corner.x), std::max(most.y, corner.y)};
    }
  }

  COLORREF color;
  std::vector<Point> points;
  Point least{kGrid, kGrid};  // the box around it
  Point most{0, 0};
};

using Picture = std::vector<Shape>;

constexpr COLORREF kInk = RGB(64, 72, 88);
constexpr COLORREF kPaper = RGB(252, 252, 252);
constexpr COLORREF kFold = RGB(200, 208, 220);
constexpr COLORREF kText = RGB(140, 150, 168);
constexpr COLORREF kBlue = RGB(40, 104, 190);
constexpr COLORREF kLightBlue = RGB(150, 194, 240);
constexpr COLORREF kFolderDark = RGB(190, 138, 30);
constexpr COLORREF kFolder = RGB(248, 210, 110);
constexpr COLORREF kGreen = RGB(60, 148, 84);
constexpr COLORREF kLightGreen = RGB(176, 224, 186);
constexpr COLORREF kPurple = RGB(120, 76, 160);
constexpr COLORREF kLightPurple = RGB(206, 184, 230);
constexpr COLORREF kRed = RGB(208, 36, 36);

Shape Box(COLORREF color, double left, double top, double right, double bottom) {
  return {color, {{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
}

Picture Sheet() {
  return {{kInk, {{2.5, 0.5}, {10, 0.5}, {13.5, 4}, {13.5, 15.5}, {2.5, 15.5}}},
          {kPaper, {{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}}},
          {kFold, {{9.5, 1.5}, {12.5, 4.5}, {9.5, 4.5}}},
          Box(kText, 5, 7, 11, 8),
          Box(kText, 5, 9, 11, 10),
          Box(kText, 5, 11, 9, 12)};
}

Picture Folder(COLORREF edge, COLORREF face) {
  return {{edge, {{0.5, 2.5}, {6, 2.5}, {7.5, 4.5}, {15.5, 4.5}, {15.5, 13.5}, {0.5, 13.5}}},
          {face, {{1.5, 3.5}, {5.5, 3.5}, {7, 5.5}, {14.5, 5.5}, {14.5, 12.5}, {1.5, 12.5}}}};
}

Picture WindowFrame(COLORREF edge, COLORREF face) {
  return {Box(edge, 0.5, 1.5, 15.5, 14.5), Box(kPaper, 1.5, 5, 14.5, 13.5), Box(face, 1.5, 2.5, 14.5, 4)};
}

void Append(Picture& picture, const Picture& more) {
  picture.insert(picture.end(), more.begin(), more.end());
}

// Two bars crossed.
Picture Cross(double left, double top, double size) {
  const double right = left + size;
  const double bottom = top + size;
  constexpr double kWide = 2;
  return {
      {kRed, {{left, top + kWide}, {left + kWide, top}, {right, bottom - kWide}, {right - kWide, bottom}}},
      {kRed, {{right - kWide, top}, {right, top + kWide}, {left + kWide, bottom}, {left, bottom - kWide}}}};
}

Picture PictureOf(NodeImage image) {
  Picture picture;
  switch (image) {
    case NodeImage::Project:
      picture = WindowFrame(kInk, kLightBlue);
      Append(picture,
             {Box(kBlue, 3, 6.5, 7, 8.5), Box(kBlue, 9, 8, 13, 10), Box(kBlue, 9, 11, 13, 13),
              Box(kInk, 4.5, 8.5, 5.5, 12.5), Box(kInk, 5.5, 8.7, 9, 9.5), Box(kInk, 5.5, 11.6, 9, 12.5)});
      return picture;
    case NodeImage::Heading:
      return Folder(kFolderDark, kFolder);
    case NodeImage::Form:
      picture = WindowFrame(kBlue, kLightBlue);
      Append(picture,
             {Box(kText, 3, 6.5, 13, 7.5), Box(kText, 3, 8.5, 10, 9.5), Box(kBlue, 9, 10.8, 13, 12.5)});
      return picture;
    case NodeImage::Control:
      return {{kGreen, {{8, 0.5}, {14.5, 4}, {14.5, 12}, {8, 15.5}, {1.5, 12}, {1.5, 4}}},
              {kPaper, {{8, 1.8}, {13, 4.5}, {8, 7.2}, {3, 4.5}}},
              {kLightGreen, {{2.5, 5.4}, {7.5, 8.1}, {7.5, 13.9}, {2.5, 11.3}}},
              {kLightGreen, {{13.5, 5.4}, {8.5, 8.1}, {8.5, 13.9}, {13.5, 11.3}}}};
    case NodeImage::TypeLibrary:
      return {Box(kPurple, 1.5, 1.5, 5.5, 14.5),
              Box(kLightPurple, 2.5, 2.5, 4.5, 13.5),
              Box(kPurple, 5.5, 0.5, 9.5, 14.5),
              Box(kLightPurple, 6.5, 1.5, 8.5, 13.5),
              {kPurple, {{9.5, 3}, {12.8, 2}, {15.8, 13.5}, {12.5, 14.5}}},
              {kLightPurple, {{10.7, 3.7}, {12.1, 3.2}, {14.6, 12.8}, {13.2, 13.3}}}};
    case NodeImage::File:
      return Sheet();
    case NodeImage::MissingFile:
      picture = Sheet();
      Append(picture, Cross(5.5, 6, 10));
      return picture;
    case NodeImage::FileGroup:
      picture = {Box(kInk, 8.5, 0.5, 13.5, 8), Box(kPaper, 9.5, 1.5, 12.5, 8)};
      Append(picture, Folder(kFolderDark, kFolder));
      Append(picture, {Box(kFolderDark, 3, 8, 13, 9), Box(kFolderDark, 3, 10, 10, 11)});
      return picture;
  }
  return picture;
}

// Whether a point lies inside: a ray from it crosses the border an odd number of times.
bool Contains(const Shape& shape, Point point) {
  if (point.x < shape.least.x || point.x > shape.most.x || point.y < shape.least.y ||
      point.y > shape.most.y) {
    return false;
  }
  bool inside = false;
  for (std::size_t i = 0, last = shape.points.size() - 1; i < shape.points.size(); last = i++) {
    const Point& a = shape.points[i];
    const Point& b = shape.points[last];
    if ((a.y > point.y) != (b.y > point.y) && point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) {
      inside = !inside;
    }
  }
  return inside;
}

struct Pixel {
  double red = 0, green = 0, blue = 0;
  double covered = 0;  // by shapes, 0 to 1
};

// A pixel is the mean of samples on a grid of its own, which smooths slanting edges.
Pixel Sample(const Picture& picture, COLORREF ground, int size, int column, int row) {
  constexpr int kSamples = 4;
  constexpr double kWeight = 1.0 / (kSamples * kSamples);
  Pixel pixel;
  for (int sample = 0; sample < kSamples * kSamples; ++sample) {
    const int across = column * kSamples + sample % kSamples;
    const int down = row * kSamples + sample / kSamples;
    const double unit = kGrid / (size * kSamples);
    const Point point{(across + 0.5) * unit, (down + 0.5) * unit};
    const auto shape = std::find_if(picture.rbegin(), picture.rend(),
                                    [&point](const Shape& candidate) { return Contains(candidate, point); });
    const COLORREF color = shape == picture.rend() ? ground : shape->color;
    pixel.red += kWeight * GetRValue(color);
    pixel.green += kWeight * GetGValue(color);
    pixel.blue += kWeight * GetBValue(color);
    if (shape != picture.rend()) pixel.covered += kWeight;
  }
  return pixel;
}

// A bitmap of 32 bits a pixel, and its bytes.
struct Canvas {
  OwnedBitmap bitmap;
  RGBQUAD* pixels = nullptr;
};

Canvas MakeCanvas(const Ledger& ledger, int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // the upper row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  Canvas canvas;
  canvas.bitmap = OwnedBitmap(ledger, CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  canvas.pixels = static_cast<RGBQUAD*>(bits);
  return canvas;
}

BYTE Rounded(double value) {
  return static_cast<BYTE>(std::clamp(value + 0.5, 0.0, 255.0));
}

// With `covers`, the pixels tell how much of each is covered, as an icon needs it.
void Draw(const Canvas& canvas, NodeImage image, COLORREF ground, int size, bool covers) {
  if (canvas.pixels == nullptr) return;
  const Picture picture = PictureOf(image);
  for (int row = 0; row < size; ++row) {
    for (int column = 0; column < size; ++column) {
      const Pixel pixel = Sample(picture, ground, size, column, row);
      canvas.pixels[row * size + column] = {Rounded(pixel.blue), Rounded(pixel.green), Rounded(pixel.red),
                                            covers ? Rounded(pixel.covered * 255) : BYTE{0}};
    }
  }
}

}  // namespace

OwnedImageList MakeNodeImages(const Ledger& ledger, int size) {
  constexpr int kCount = static_cast<int>(NodeImage::FileGroup) + 1;
  OwnedImageList images(ledger, ImageList_Create(size, size, ILC_COLOR24, kCount, 0));
  for (int image = 0; image < kCount; ++image) {
    const Canvas canvas = MakeCanvas(ledger, size, size);
    Draw(canvas, static_cast<NodeImage>(image), GetSysColor(COLOR_WINDOW), size, false);
    ImageList_Add(images.Get(), canvas.bitmap.Get(), nullptr);
  }
  return images;
}

OwnedIcon MakeWizardIcon(const Ledger& ledger, int size) {
  const Canvas canvas = MakeCanvas(ledger, size, size);
  Draw(canvas, NodeImage::Project, RGB(0, 0, 0), size, true);
  const OwnedBitmap mask(ledger, CreateBitmap(size, size, 1, 1, nullptr));
  ICONINFO info{};
  info.fIcon = TRUE;
  info.hbmColor = canvas.bitmap.Get();
  info.hbmMask = mask.Get();
  return OwnedIcon(ledger, CreateIconIndirect(&info));
}

}  // namespace bxvbwiz
