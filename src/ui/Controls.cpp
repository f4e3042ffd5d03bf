#include "ui/Controls.h"

#include <utility>

namespace bxvbwiz {

namespace {

std::string TagOf(Texts texts) {
  const auto item = [](const char* name, TextId id) {
    return id == kNoText ? std::string() : name + std::to_string(NumberOf(id));
  };
  return item("Resource=", texts.text) +
         item(texts.text == kNoText ? "Tooltip=" : ";Tooltip=", texts.toolTip);
}

}  // namespace

Control::Control(ControlKind ofKind, Container& holder, const Place& at, Texts texts, Handler whenUsed)
    : kind(ofKind), page(holder.asControl), place(at), tag(TagOf(texts)), handler(std::move(whenUsed)) {
  holder.controls.push_back(this);
}

bool Control::IsShown() const {
  const bool isEmpty = kind == ControlKind::Label && text.empty();
  return visible && !isEmpty && (page == nullptr || page->visible);
}

}  // namespace bxvbwiz
