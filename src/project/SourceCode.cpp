#include "project/SourceCode.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\r\n";
// A statement goes on in the next line after " _".
constexpr std::string_view kBetweenWords = " \t_\r\n";
constexpr std::string_view kNotInWords = " \t\r\n\"'!#$%&()*+,-./:;<=>?@[\\]^{|}~`";

using Tokens = std::vector<std::string_view>;

// Cuts the next token off a text: a word, a text in quotes or a sign. Empty at the end, in front of a
// comment, and where a text in quotes does not end.
std::string_view TakeToken(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBetweenWords), rest.size()));
  std::size_t size = std::max<std::size_t>(rest.find_first_of(kNotInWords), 1);
  if (StartsWith(rest, "'")) size = 0;
  if (StartsWith(rest, "\"")) {
    const std::size_t end = rest.find_first_of("\"\r\n", 1);
    size = end == kNone || rest[end] != '"' ? 0 : end + 1;
  }
  const std::string_view token = rest.substr(0, size);
  rest.remove_prefix(token.size());
  return token;
}

std::size_t LineStart(std::string_view text, std::size_t position) {
  const std::size_t end = position == 0 ? kNone : text.find_last_of("\r\n", position - 1);
  return end == kNone ? 0 : end + 1;
}

// The start of the statement's first line.
std::size_t StatementStart(std::string_view text, std::size_t position) {
  for (;;) {
    const std::size_t start = LineStart(text, position);
    position = text.substr(0, start).find_last_not_of(kBlanks);
    const bool goesOn = position != kNone && position > 0 && text[position] == '_' &&
                        kBlanks.find(text[position - 1]) != kNone;
    if (!goesOn) return start;
  }
}

// Whether `tokens` end in `wanted`, in any case.
bool EndIn(const Tokens& tokens, std::initializer_list<std::string_view> wanted) {
  return tokens.size() >= wanted.size() &&
         std::equal(wanted.begin(), wanted.end(), tokens.end() - static_cast<std::ptrdiff_t>(wanted.size()),
                    EqualsIgnoreCase);
}

// What a statement asks for by a text in quotes that stands behind `head` and in front of `next`.
std::optional<CodeUse::Kind> KindOf(const Tokens& head, std::string_view next) {
  if (head.size() < 2 || EqualsIgnoreCase(head[0], "Rem")) return std::nullopt;
  const bool isDeclare = EqualsIgnoreCase(head[0], "Declare") || EqualsIgnoreCase(head[1], "Declare");
  if (isDeclare && EndIn(head, {"Lib"})) return CodeUse::Kind::Dll;
  const bool isCall = EndIn(head, {"CreateObject", "("}) || EndIn(head, {"GetObject", "(", ","}) ||
                      EndIn(head, {"GetObject", "(", "\"\"", ","});
  if (isCall && (next == ")" || next == ",")) return CodeUse::Kind::Object;
  return std::nullopt;
}

// What the compiler of a 32-bit program takes for granted. Projects define further constants.
std::optional<int> ValueOf(std::string_view text) {
  constexpr std::pair<std::string_view, int> kConstants[] = {{"Win16", 0}, {"Win32", -1}, {"Win64", 0},
                                                             {"Mac", 0},   {"VBA6", -1},  {"VBA7", 0},
                                                             {"True", -1}, {"False", 0}};
  for (const auto& [name, value] : kConstants) {
    if (EqualsIgnoreCase(text, name)) return value;
  }
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// Whether the condition "[Not] Constant [= Value] Then" holds; nothing when that depends on the project.
std::optional<bool> Holds(std::string_view condition) {
  std::string_view name = TakeToken(condition);
  const bool isNegated = EqualsIgnoreCase(name, "Not");
  if (isNegated) name = TakeToken(condition);
  std::string_view next = TakeToken(condition);
  const bool isComparison = next == "=";
  const std::optional<int> left = ValueOf(name);
  const std::optional<int> right = isComparison ? ValueOf(TakeToken(condition)) : 0;
  if (isComparison) next = TakeToken(condition);
  if (!left || !right || !(next.empty() || EqualsIgnoreCase(next, "Then"))) return std::nullopt;
  return ((*left == *right) == isComparison) != isNegated;
}

// Follows conditional compilation through a text.
class Conditions {
 public:
  explicit Conditions(std::string_view text) : text_(text) {}

  // Whether what stands at `position` may be compiled. Positions must not decrease.
  bool MayBeCompiled(std::size_t position) {
    for (; (next_ = text_.find('#', next_)) < position; ++next_) {
      const std::size_t start = LineStart(text_, next_);
      std::string_view line = text_.substr(start, text_.find_first_of("\r\n", next_) - start);
      if (TakeToken(line) == "#") Take(line);
    }
    return std::none_of(blocks_.begin(), blocks_.end(), [](const Block& block) { return block.isLeftOut; });
  }

 private:
  struct Block {
    bool isDecided = false;  // a branch of it is certainly compiled
    bool isLeftOut = false;  // the present branch certainly is not
  };

  void Take(std::string_view directive) {
    const std::string_view word = TakeToken(directive);
    const bool isIf = EqualsIgnoreCase(word, "If");
    if (isIf) blocks_.emplace_back();
    if (blocks_.empty()) return;
    if (isIf || EqualsIgnoreCase(word, "ElseIf")) Enter(Holds(directive));
    if (EqualsIgnoreCase(word, "Else")) Enter(true);
    if (EqualsIgnoreCase(word, "End")) blocks_.pop_back();
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
  Tokens head;
  int line = 1;
  std::size_t counted = 0;
  // Every name that is looked for is a text, and quotes are rarer than letters.
  for (std::size_t quote = text.find('"'); quote != kNone; quote = text.find('"', quote + 1)) {
    const std::size_t last = text.substr(0, quote).find_last_not_of(kBetweenWords);
    if (last == kNone || std::string_view("bB(,").find(text[last]) == kNone) continue;
    std::string_view rest = text.substr(StatementStart(text, quote));
    std::string_view token = TakeToken(rest);
    for (head.clear(); !token.empty() && token.data() < &text[quote]; token = TakeToken(rest))
      head.push_back(token);
    if (token.empty() || token.data() != &text[quote]) continue;  // in a comment or in another text
    const std::string_view name = TrimBlanks(token.substr(1, token.size() - 2));
    const std::optional<CodeUse::Kind> kind = KindOf(head, TakeToken(rest));
    if (!kind || name.empty() || !conditions.MayBeCompiled(quote)) continue;
    line += CountLineEnds(text.substr(counted, quote - counted));
    counted = quote;
    uses.push_back({*kind, name, line});
  }
  return uses;
}

void ForEachControlLine(std::string_view text, const std::function<void(std::string_view, int)>& use) {
  constexpr std::string_view kControlLine = "Object =";
  int line = 1;
  std::size_t counted = 0;
  // Forms hold their code, so that files are long and control lines few: a search skips what a reader of
  // lines would touch.
  for (std::size_t at = text.find(kControlLine); at != kNone; at = text.find(kControlLine, at + 1)) {
    if (LineStart(text, at) != at) continue;
    line += CountLineEnds(text.substr(counted, at - counted));
    counted = at;
    use(text.substr(at, text.find_first_of("\r\n", at) - at).substr(kControlLine.size()), line);
  }
}

}  // namespace bxvbwiz
