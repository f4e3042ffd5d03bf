#include "machine/MachineIni.h"

#include <charconv>
#include <optional>

#include "machine/CodePages.h"
#include "machine/MachineError.h"
#include "machine/ProfileEngine.h"
#include "machine/WindowsPath.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::uint32_t kDefaultCodePage = 1252;

class Reader {
 public:
  Reader(std::string_view bytes, const std::string& path)
      : path_(path), text_(MakeCodePage(kUtf8CodePage)), engine_(*text_, bytes) {}

  MachineIni Read() {
    MachineIni ini;
    ini.codePage = ReadCodePage();
    ReadLanguage(ini.userLanguage);
    ReadNumber("PlatformId", ini.version.platformId);
    ReadNumber("MajorVersion", ini.version.majorVersion);
    ReadNumber("MinorVersion", ini.version.minorVersion);
    ReadNumber("BuildNumber", ini.version.buildNumber);
    if (const auto value = engine_.Value("Version", "CSDVersion")) ini.version.csdVersion = *value;
    ReadFolder("Windows", ini.windowsFolder);
    ReadFolder("System", ini.systemFolder);
    ReadPrograms(ini.programs);
    ReadDrives(ini);
    ReadShares(ini);
    return ini;
  }

 private:
  [[noreturn]] void Refuse(const std::string& section, const std::string& key, const std::string& value,
                           const std::string& reason) const {
    throw MachineError(path_ + ": [" + section + "] " + key + "=" + value + ": " + reason);
  }

  // A decimal number; nothing when the key is missing.
  std::optional<std::uint32_t> Number(const std::string& section, const std::string& key) const {
    const std::optional<std::string> value = engine_.Value(section, key);
    if (!value) return std::nullopt;
    std::uint32_t number = 0;
    const char* end = value->data() + value->size();
    const auto [rest, error] = std::from_chars(value->data(), end, number);
    if (value->empty() || rest != end || error != std::errc()) {
      Refuse(section, key, *value, "not a number from 0 to 4294967295");
    }
    return number;
  }

  std::unique_ptr<CodePage> ReadCodePage() const {
    const std::uint32_t number = Number("Machine", "CodePage").value_or(kDefaultCodePage);
    std::unique_ptr<CodePage> codePage = number <= 0xFFFF ? MakeCodePage(static_cast<int>(number)) : nullptr;
    if (!codePage) {
      Refuse("Machine", "CodePage", std::to_string(number),
             "not one of the supported code pages 874, 932, 936, 949, 950, 1250 to 1258 and 65001");
    }
    return codePage;
  }

  void ReadLanguage(std::uint32_t& language) const {
    const std::optional<std::string> value = engine_.Value("Machine", "Language");
    if (!value) return;
    const char* end = value->data() + value->size();
    std::uint16_t number = 0;
    const auto [rest, error] = std::from_chars(value->data(), end, number, 16);
    if (value->size() != 4 || rest != end || error != std::errc()) {
      Refuse("Machine", "Language", *value, "not the four hexadecimal digits of a language");
    }
    language = number;
  }

  void ReadNumber(const std::string& key, std::uint32_t& number) const {
    number = Number("Version", key).value_or(number);
  }

  // The full path without a backslash at its end.
  std::optional<WindowsPath> FullPath(const std::string& text) const {
    WindowsPath path;
    const bool full = text.size() > 2 && text[1] == ':' && text[2] == '\\';
    if (!full ||
        WindowsPath::Parse(text, "C:\\", WindowsPath::Wildcards::Refused, path) != SystemError::Success)
      return std::nullopt;
    return path;
  }

  void ReadFolder(const std::string& key, std::string& folder) const {
    const std::optional<std::string> value = engine_.Value("Folders", key);
    if (!value) return;
    const std::optional<WindowsPath> path = FullPath(*value);
    if (!path) Refuse("Folders", key, *value, "not the full path of a folder");
    folder = path->Text();
  }

  void ReadPrograms(std::map<std::string, std::string>& programs) const {
    const auto names = engine_.Keys("Programs");
    if (!names) return;
    for (const std::string& name : *names) {
      const std::string value = engine_.Value("Programs", name).value_or("");
      const std::optional<WindowsPath> path = FullPath(name);
      if (!path || path->IsRoot())
        Refuse("Programs", name, value, "the key is not the full path of a program");
      if (value.empty()) Refuse("Programs", name, value, "the program to run in its place is missing");
      programs.emplace(path->Key(), value);
    }
  }

  void ReadDrives(MachineIni& ini) const {
    for (const std::string& name : engine_.Keys("Drives").value_or(std::vector<std::string>())) {
      const bool isLetter = name.size() == 1 && UpperCase(name) >= "A" && UpperCase(name) <= "Z";
      AddDrive("Drives", name, isLetter ? UpperCase(name) + ":" : "", "not the letter of a drive", ini);
    }
  }

  void ReadShares(MachineIni& ini) const {
    for (const std::string& name : engine_.Keys("Shares").value_or(std::vector<std::string>())) {
      WindowsPath path;
      const bool isShare =
          StartsWith(name, "\\\\") &&
          WindowsPath::Parse(name, "C:\\", WindowsPath::Wildcards::Refused, path) == SystemError::Success &&
          path.IsRoot();
      const std::string root = isShare ? path.Text().substr(0, path.Text().size() - 1) : "";
      AddDrive("Shares", name, root, "not a server and its share, \\\\server\\share", ini);
    }
  }

  void AddDrive(const std::string& section, const std::string& name, const std::string& root,
                const std::string& reason, MachineIni& ini) const {
    const std::string folder = engine_.Value(section, name).value_or("");
    if (root.empty()) Refuse(section, name, folder, reason);
    if (folder.empty()) Refuse(section, name, folder, "the folder is missing");
    const MappedDrive drive{root, folder, path_ + ": [" + section + "] " + name + "=" + folder};
    if (!ini.drives.emplace(UpperCase(root), drive).second)
      Refuse(section, name, folder, "it is given twice");
  }

  const std::string& path_;
  std::unique_ptr<CodePage> text_;
  ProfileEngine engine_;
};

}  // namespace

MachineIni ReadMachineIni(std::string_view bytes, const std::string& path) {
  // The profile functions would not see a heading after the mark; here it only names the encoding.
  if (StartsWith(bytes, kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return Reader(bytes, path).Read();
}

}  // namespace bxvbwiz
