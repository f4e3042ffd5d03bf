#include "ui/win32/Win32View.h"

#include <windows.h>
// after windows.h
#include <commdlg.h>
#include <shellapi.h>

#include "support/basFile.h"
#include "support/Errors.h"
#include "text/win32/WideText.h"
#include "ui/win32/WizardWindow.h"

namespace bxvbwiz {

namespace {

constexpr std::size_t kLongestPath = 32768;  // of any file, with the end of the text

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::wstring PathOf(HINSTANCE module) {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(module, path.data(), kLongestPath));
  return path;
}

// What the system says about one of its errors.
std::wstring SystemText(DWORD error) {
  wchar_t text[512] = {};
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                 static_cast<DWORD>(std::size(text)), nullptr);
  return text;
}

class Win32View : public FormView {
 public:
  Win32View(frmMain& form, HINSTANCE module) : form_(form), module_(module) {}

  void ShowModal() override {
    const auto window = std::make_shared<WizardWindow>(form_, module_);
    window_ = window;
    window->RunModal();  // this view is gone when it returns
  }

  Button ShowMessage(const Message& message, const std::string& title) override {
    return static_cast<Button>(MessageBoxW(Owner(), Widen(message.text).c_str(), Widen(title).c_str(),
                                           static_cast<UINT>(message.style)));
  }

  void Refresh() override {
    if (const auto window = window_.lock()) window->Refresh();
  }
  void ProcessEvents() override {
    if (const auto window = window_.lock()) window->ProcessEvents();
  }
  void SetPointer(Pointer pointer) override {
    if (const auto window = window_.lock()) window->SetPointer(pointer);
  }

  // The name is not checked here: the page says what is wrong with it.
  std::string BrowseForFile(const std::string& fileType, const std::string& pattern) override {
    std::wstring filter = Widen(fileType);
    filter.push_back(L'\0');
    filter += Widen(pattern);
    filter.push_back(L'\0');  // and the text's own end
    std::wstring path(kLongestPath, L'\0');
    const std::wstring extension = Widen(pattern.substr(pattern.find('.') + 1));
    OPENFILENAMEW open{};
    open.lStructSize = sizeof(open);
    open.hwndOwner = Owner();
    open.lpstrFilter = filter.c_str();
    open.lpstrFile = path.data();
    open.nMaxFile = kLongestPath;
    open.lpstrDefExt = extension.c_str();
    open.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    const std::wstring folder = Widen(GetPathFolder(form_.txtVBPname.text));
    if (IsFolder(folder)) open.lpstrInitialDir = folder.c_str();
    if (GetOpenFileNameW(&open)) return Narrow(path.c_str());
    const DWORD error = CommDlgExtendedError();  // 0 when the user cancelled
    if (error == 0) return {};
    throw RuntimeError(kErrorInvalidCall, "The file dialog failed (error " + std::to_string(error) + ")");
  }

  // When it cannot be opened, a message gives its path and the system's error.
  void OpenHelp(const std::string& helpFile, const std::string& topic) override {
    const std::wstring module = PathOf(module_);
    const std::wstring path = module.substr(0, module.find_last_of(L'\\') + 1) + Widen(helpFile);
    SHELLEXECUTEINFOW open{};
    open.cbSize = sizeof(open);
    open.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    open.hwnd = Owner();
    // Windows' program for help files opens a page; what opens the file itself says why it cannot.
    const std::wstring page = L"\"" + path + L"::/" + Widen(topic) + L"\"";
    const bool isThere = GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    open.lpFile = isThere ? L"hh.exe" : path.c_str();
    open.lpParameters = isThere ? page.c_str() : nullptr;
    open.nShow = SW_SHOWNORMAL;
    if (ShellExecuteExW(&open)) return;
    open.lpFile = path.c_str();
    open.lpParameters = nullptr;
    if (isThere && ShellExecuteExW(&open)) return;
    const std::wstring text = path + L"\r\n\r\n" + SystemText(GetLastError());
    MessageBoxW(open.hwnd, text.c_str(), Widen(form_.caption).c_str(), MB_ICONEXCLAMATION);
  }

  // The executable is named while the form is shown.
  int TextWidth(const std::string& text) const override {
    const auto window = window_.lock();
    return window == nullptr ? 0 : window->TextWidth(text);
  }
  int ExeLabelWidth() const override {
    const auto window = window_.lock();
    return window == nullptr ? 0 : window->Width(form_.lblExeName);
  }

  void Unload(const frmMain& /*form*/) override {
    if (const auto window = window_.lock()) window->FormUnloaded();
  }

 private:
  // The form's window; before there is one, the host's.
  HWND Owner() const {
    const auto window = window_.lock();
    return window != nullptr && window->Handle() != nullptr ? window->Handle() : GetActiveWindow();
  }

  frmMain& form_;
  HINSTANCE module_;
  std::weak_ptr<WizardWindow> window_;
};

}  // namespace

std::unique_ptr<FormView> MakeWin32View(frmMain& form, HINSTANCE module) {
  return std::make_unique<Win32View>(form, module);
}

}  // namespace bxvbwiz
