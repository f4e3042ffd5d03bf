#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

// Path texts and directory look-ups. The separator is the backslash.
namespace bxvbwiz {

// Ends in a backslash: appended when missing, a lone one for the empty path.
std::string FixPath(std::string_view path);
// Cut before the first NUL.
std::string StripAtNull(std::string_view text);
// The root ("C:\", "\\server\share", or empty) and the position from 1 where the rest begins, 0 without a
// root.
std::string SplitPathRoot(std::string_view path, std::int16_t& position);
// The parts of a path below its root.
std::vector<std::string> SplitPathComponents(std::string_view rest);

enum class PathPart : std::int16_t { Folder = 2, FileName = 3, Title = 4, Root = 5 };
std::string ParsePath(std::string_view path, PathPart part);
// The folder, without a trailing backslash unless it is a root.
std::string GetPathFolder(std::string_view path);
// The last part.
std::string GetPathFileName(std::string_view path);
// Without one trailing backslash.
std::string StripTrailingBackslash(std::string_view path);

// Whether the path ends in one of these, which are in upper case (".DLL").
bool HasExtension(std::string_view path, std::initializer_list<std::string_view> extensions);

// True for a path that starts at a drive or a network share.
bool IsAbsolutePath(std::string_view path);

// A path that the registry or a .dep file gives, in the one spelling in which paths are compared: without
// "\\?\",
// "." and ".." and doubled separators, and with the long names of short ones ("PROGRA~1") where the file
// system tells them. Another than a full path stays as it is.
std::string NormalPath(FileSystem& files, const std::string& path);

// The label on which a shortened path is shown: its width and its form's measurement, in the same unit.
class LabelMetrics {
 public:
  virtual ~LabelMetrics() = default;
  virtual int Width() const = 0;
  virtual int TextWidth(const std::string& text) const = 0;
};
// The path, or its root, "...\" and as many trailing parts as fit; empty when not even the last one
// fits.
std::string CompactPathForLabel(const LabelMetrics& label, const std::string& path);

// Dir$: the name of the first entry that matches `pattern`, empty when there is none. Without `directories`
// only normal files count (no hidden, system or directory entry), with it directories count too.
std::string Dir(FileSystem& files, const std::string& pattern, bool directories = false);
// True when a look-up of folder + name gives a file of that name, case ignored. `folder` ends in a backslash.
bool FolderHoldsFile(FileSystem& files, const std::string& folder, const std::string& name);

// Cuts `bytes` into lines that end in CR LF, LF or CR; the last one may lack its end. Gives false after the
// last line.
class LineReader {
 public:
  explicit LineReader(std::string_view bytes) : rest_(bytes) {}
  bool Next(std::string_view& line);
  // The number of the line that was read last; the first is 1.
  int Number() const { return number_; }

 private:
  std::string_view rest_;
  int number_ = 0;
};

// How many lines, as LineReader divides them, end in `bytes`.
int CountLineEnds(std::string_view bytes);

}  // namespace bxvbwiz
