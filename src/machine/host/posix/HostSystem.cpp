#include <fcntl.h>
#include <iconv.h>
#include <locale.h>
#include <time.h>
#include <unistd.h>
#include <wctype.h>

#include <cerrno>

#include "machine/host/Host.h"

namespace bxvbwiz::host {
namespace {

constexpr std::size_t kInvalid = static_cast<std::size_t>(-1);  // what iconv gives for an error

// One code page to UTF-16, low byte first.
class Converter {
 public:
  explicit Converter(int codePage)
      : converter_(iconv_open("UTF-16LE", ("CP" + std::to_string(codePage)).c_str())) {}
  ~Converter() {
    if (IsValid()) iconv_close(converter_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool IsValid() const { return converter_ != reinterpret_cast<iconv_t>(-1); }

  // The character that exactly these bytes stand for; 0 when there is none.
  char16_t Character(std::array<char, 2> bytes, std::size_t count) {
    char* in = bytes.data();
    unsigned char units[8];
    char* out = reinterpret_cast<char*>(units);
    std::size_t inLeft = count;
    std::size_t outLeft = sizeof(units);
    iconv(converter_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(converter_, &in, &inLeft, &out, &outLeft) == kInvalid) return 0;
    if (inLeft != 0 || sizeof(units) - outLeft != 2) return 0;
    return static_cast<char16_t>(units[0] | units[1] << 8);
  }

 private:
  iconv_t converter_;
};

// The character types of all scripts, whatever the user's locale is.
class UnicodeLocale {
 public:
  UnicodeLocale() {
    for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"}) {
      if (locale_ == nullptr) locale_ = newlocale(LC_CTYPE_MASK, name, nullptr);
    }
  }
  ~UnicodeLocale() {
    if (locale_ != nullptr) freelocale(locale_);
  }
  UnicodeLocale(const UnicodeLocale&) = delete;
  UnicodeLocale& operator=(const UnicodeLocale&) = delete;

  bool IsLetterOrDigit(char32_t character) const {
    const auto code = static_cast<wint_t>(character);
    return (locale_ != nullptr ? iswalnum_l(code, locale_) : iswalnum(code)) != 0;
  }

 private:
  locale_t locale_ = nullptr;
};

}  // namespace

std::vector<char16_t> DoubleByteCharacters(int codePage) {
  Converter converter(codePage);
  if (!converter.IsValid()) return {};
  std::vector<char16_t> characters(0x10000);
  for (unsigned lead = 0; lead < 0x100; ++lead) {
    characters[lead] = converter.Character({static_cast<char>(lead), 0}, 1);
    if (lead < 0x81 || lead == 0xFF || characters[lead] != 0) continue;
    for (unsigned trail = 0x40; trail < 0xFF; ++trail) {
      characters[lead << 8 | trail] =
          converter.Character({static_cast<char>(lead), static_cast<char>(trail)}, 2);
    }
  }
  return characters;
}

bool IsLetterOrDigit(char32_t character) {
  static const UnicodeLocale locale;
  return locale.IsLetterOrDigit(character);
}

bool RandomBytes(unsigned char* bytes, std::size_t count) {
  const int source = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
  if (source < 0) return false;
  std::size_t got = 0;
  while (got < count) {
    const ssize_t result = read(source, bytes + got, count - got);
    if (result < 0 && errno == EINTR) continue;
    if (result <= 0) break;
    got += static_cast<std::size_t>(result);
  }
  close(source);
  return got == count;
}

DateTime DateTimeOf(std::int64_t seconds, bool utc) {
  const auto time = static_cast<time_t>(seconds);
  struct tm parts = {};
  const struct tm* result = utc ? gmtime_r(&time, &parts) : localtime_r(&time, &parts);
  if (result == nullptr) return {};
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

}  // namespace bxvbwiz::host
