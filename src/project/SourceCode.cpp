#include "project/SourceCode.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t";
// A statement goes on in the next line after " _".
constexpr std::string_view kBetweenWords = " \t_\r\n";

bool IsNameCharacter(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 0x80 || character == '_' || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
         (byte >= 'a' && byte <= 'z');
}

std::string_view WithoutEnd(std::string_view text, std::string_view characters) {
  return text.substr(0, text.find_last_not_of(characters) + 1);
}

std::string_view Trim(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return WithoutEnd(text, kBlanks);
}

// Takes `word`, in any case, off the end of `text`. False when it ends in another word.
bool TakeLastWord(std::string_view& text, std::string_view word) {
  if (text.size() < word.size() || !EqualsIgnoreCase(text.substr(text.size() - word.size()), word))
    return false;
  const std::size_t rest = text.size() - word.size();
  if (rest > 0 && IsNameCharacter(text[rest - 1])) return false;
  text = text.substr(0, rest);
  return true;
}

bool TakeLast(std::string_view& text, char character) {
  if (text.empty() || text.back() != character) return false;
  text = WithoutEnd(text.substr(0, text.size() - 1), kBetweenWords);
  return true;
}

// The first word of `text`, which is cut off.
std::string_view TakeFirstWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBetweenWords), text.size()));
  const std::size_t end = std::min(text.find_first_of(kBetweenWords), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

std::size_t LineStart(std::string_view text, std::size_t position) {
  const std::size_t end = position == 0 ? kNone : text.find_last_of("\r\n", position - 1);
  return end == kNone ? 0 : end + 1;
}

// The start of the statement's first line.
std::size_t StatementStart(std::string_view text, std::size_t position) {
  std::size_t start = LineStart(text, position);
  while (start > 0) {
    const std::size_t before =
        start - (start > 1 && text[start - 1] == '\n' && text[start - 2] == '\r' ? 2 : 1);
    const std::string_view line = WithoutEnd(text.substr(0, before), kBlanks);
    if (line.size() < 2 || line.back() != '_' || kBlanks.find(line[line.size() - 2]) == kNone) break;
    start = LineStart(text, before);
  }
  return start;
}

// Whether the end of `line` is code, not part of a comment or a text.
bool EndsInCode(std::string_view line) {
  std::string_view rest = line;
  if (EqualsIgnoreCase(TakeFirstWord(rest), "Rem")) return false;
  bool isInText = false;
  for (const char character : line) {
    if (character == '"') isInText = !isInText;
    if (character == '\'' && !isInText) return false;
  }
  return !isInText;
}

// Whether `head`, up to a quote, is a Declare statement up to the name of its DLL.
bool IsDeclare(std::string_view head) {
  if (!TakeLastWord(head, "Lib")) return false;
  const std::string_view first = TakeFirstWord(head);
  return EqualsIgnoreCase(first, "Declare") || EqualsIgnoreCase(TakeFirstWord(head), "Declare");
}

// Whether `head`, up to a quote, is a call up to the name of its object.
bool IsObjectCall(std::string_view head) {
  if (!TakeLast(head, ',')) return TakeLast(head, '(') && TakeLastWord(head, "CreateObject");
  if (EndsWith(head, "\"\"")) head = WithoutEnd(head.substr(0, head.size() - 2), kBetweenWords);
  return TakeLast(head, '(') && TakeLastWord(head, "GetObject");
}

// What the compiler of a 32-bit program takes for granted. Projects define further constants.
std::optional<int> ValueOf(std::string_view text) {
  struct Constant {
    std::string_view name;
    int value;
  };
  constexpr Constant kConstants[] = {{"Win16", 0}, {"Win32", -1}, {"Win64", 0}, {"Mac", 0},
                                     {"VBA6", -1}, {"VBA7", 0},   {"True", -1}, {"False", 0}};
  for (const Constant& known : kConstants) {
    if (EqualsIgnoreCase(text, known.name)) return known.value;
  }
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// Whether a condition of "#If" holds; nothing when that depends on the project.
std::optional<bool> Holds(std::string_view condition) {
  condition = Trim(condition.substr(0, condition.find('\'')));
  if (TakeLastWord(condition, "Then")) condition = Trim(condition);
  if (EqualsIgnoreCase(condition.substr(0, 4), "Not ")) {
    const std::optional<bool> holds = Holds(condition.substr(4));
    return holds ? std::optional<bool>(!*holds) : std::nullopt;
  }
  const std::size_t equals = condition.find('=');
  const std::optional<int> left = ValueOf(Trim(condition.substr(0, equals)));
  if (equals == kNone) return left ? std::optional<bool>(*left != 0) : std::nullopt;
  const std::optional<int> right = ValueOf(Trim(condition.substr(equals + 1)));
  return left && right ? std::optional<bool>(*left == *right) : std::nullopt;
}

// Follows conditional compilation through a text.
class Conditions {
 public:
  explicit Conditions(std::string_view text) : text_(text) {}

  // Whether what stands at `position` may be compiled. Positions must not decrease.
  bool MayBeCompiled(std::size_t position) {
    for (; (next_ = text_.find('#', next_)) < position; ++next_) {
      const std::size_t start = LineStart(text_, next_);
      if (!Trim(text_.substr(start, next_ - start)).empty()) continue;
      Take(text_.substr(next_ + 1, text_.find_first_of("\r\n", next_) - next_ - 1));
    }
    for (const Block& block : blocks_) {
      if (block.isLeftOut) return false;
    }
    return true;
  }

 private:
  struct Block {
    bool isDecided;  // a branch of it is certainly compiled
    bool isLeftOut;  // the present branch certainly is not
  };

  void Take(std::string_view directive) {
    const std::string_view word = TakeFirstWord(directive);
    if (EqualsIgnoreCase(word, "If")) {
      blocks_.push_back({false, false});
      Enter(Holds(directive));
    } else if (blocks_.empty()) {
      return;
    } else if (EqualsIgnoreCase(word, "ElseIf")) {
      Enter(Holds(directive));
    } else if (EqualsIgnoreCase(word, "Else")) {
      Enter(true);
    } else if (EqualsIgnoreCase(word, "End")) {
      blocks_.pop_back();
    }
  }

  void Enter(std::optional<bool> holds) {
    Block& block = blocks_.back();
    block.isLeftOut = block.isDecided || holds == false;
    block.isDecided = block.isDecided || holds == true;
  }

  std::string_view text_;
  std::size_t next_ = 0;
  std::vector<Block> blocks_;
};

}  // namespace

std::vector<CodeUse> FindCodeUses(std::string_view text) {
  std::vector<CodeUse> uses;
  Conditions conditions(text);
  int line = 1;
  std::size_t counted = 0;
  // Every name that is looked for is a text, and quotes are rarer than letters.
  for (std::size_t quote = text.find('"'); quote != kNone; quote = text.find('"', quote + 1)) {
    const std::size_t last = text.substr(0, quote).find_last_not_of(kBetweenWords);
    if (last == kNone || std::string_view("bB(,").find(text[last]) == kNone) continue;
    const std::size_t start = StatementStart(text, quote);
    const std::string_view head = text.substr(start, quote - start);
    const std::string_view words = WithoutEnd(head, kBetweenWords);
    const bool isDll = IsDeclare(words);
    if ((!isDll && !IsObjectCall(words)) || !EndsInCode(head)) continue;
    const std::size_t end = text.find_first_of("\"\r\n", quote + 1);
    if (end == kNone || text[end] != '"') continue;
    const std::string_view name = Trim(text.substr(quote + 1, end - quote - 1));
    const std::size_t after = text.find_first_not_of(kBetweenWords, end + 1);
    const bool isWhole = isDll || (after != kNone && (text[after] == ')' || text[after] == ','));
    if (name.empty() || !isWhole || !conditions.MayBeCompiled(quote)) continue;
    line += CountLineEnds(text.substr(counted, quote - counted));
    counted = quote;
    uses.push_back({isDll ? CodeUse::Kind::Dll : CodeUse::Kind::Object, name, line});
  }
  return uses;
}

void ForEachControlLine(std::string_view text, const std::function<void(std::string_view, int)>& use) {
  constexpr std::string_view kControlLine = "Object =";
  // Forms hold their code, so that files are long and control lines few: a search skips what a reader of
  // lines would touch.
  int line = 1;
  std::size_t counted = 0;
  for (std::size_t at = text.find(kControlLine); at != kNone; at = text.find(kControlLine, at + 1)) {
    if (LineStart(text, at) != at) continue;
    line += CountLineEnds(text.substr(counted, at - counted));
    counted = at;
    const std::size_t value = at + kControlLine.size();
    const std::size_t end = std::min(text.find_first_of("\r\n", value), text.size());
    use(text.substr(value, end - value), line);
  }
}

}  // namespace bxvbwiz
