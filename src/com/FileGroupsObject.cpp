#include "com/BX6VBWiz.h"
#include "com/Classes.h"
#include "com/DualObject.h"
#include "com/FileRecordArgument.h"
#include "com/SetupArguments.h"
#include "setupgen/CFileGroups.h"

namespace bxvbwiz {
namespace {

class FileGroupsObject : public DualObject<IFileGroups, IID_IFileGroups, CLSID_CFileGroups> {
 public:
  explicit FileGroupsObject(std::shared_ptr<Server> owner)
      : DualObject(std::move(owner), "BX6VBWiz.CFileGroups"),
        lists_(server().core().platform().profiles),
        executables_(server().core().platform()),
        groups_(
            server().core().platform(), server().core().global(),
            [this] { return CurrentProjectFile(server()); }, lists_, executables_) {}

  STDMETHODIMP ConvertDestMacroToBXDestSymbol(BSTR* macro, BSTR* symbol) override {
    return Give(symbol, [&] { return groups_.ConvertDestMacroToBXDestSymbol(Text(macro, "macro")); });
  }
  STDMETHODIMP ConvertBXDestSymbolToPath(BSTR* symbol, BSTR* path) override {
    return Give(path, [&] { return groups_.ConvertBXDestSymbolToPath(Text(symbol, "symbol")); });
  }
  STDMETHODIMP ConvertPathToBXDestSymbol(BSTR* path, BSTR* symbol) override {
    return Give(symbol, [&] { return groups_.ConvertPathToBXDestSymbol(Text(path, "path")); });
  }
  STDMETHODIMP ConvertRegisterMacro(BSTR* macro, SHORT* code) override {
    return Give(code, [&] { return groups_.ConvertRegisterMacro(Text(macro, "macro")); });
  }
  STDMETHODIMP ResolveLinkPath(BSTR* sourcePath, BSTR* fileName, VARIANT_BOOL* resolves,
                               BSTR* path) override {
    return Give(path, [&] {
      if (resolves == nullptr) throw ComError(E_POINTER, "The argument resolves is null");
      bool found = false;
      std::string folder =
          groups_.ResolveLinkPath(Text(sourcePath, "sourcePath"), Text(fileName, "fileName"), found);
      *resolves = found ? VARIANT_TRUE : VARIANT_FALSE;
      return folder;
    });
  }
  STDMETHODIMP SearchForSourceFile(BSTR* linkDir, BSTR* fileName, BSTR* dir) override {
    return Give(dir, [&] {
      return groups_.SearchForSourceFile(Text(linkDir, "linkDir"), Text(fileName, "fileName"));
    });
  }
  STDMETHODIMP SearchForDestPath(BSTR* dir, BSTR* fileName, BSTR* foundDir) override {
    return Give(foundDir,
                [&] { return groups_.SearchForDestPath(Text(dir, "dir"), Text(fileName, "fileName")); });
  }
  STDMETHODIMP get_AppPath(BSTR* value) override {
    return Give(value, [&] { return groups_.AppPath(); });
  }
  STDMETHODIMP GetAppPath(BSTR* projectFile, BSTR* path) override {
    return Give(path, [&] { return groups_.GetAppPath(Text(projectFile, "projectFile")); });
  }

  STDMETHODIMP GetFileGroupInfo(BSTR* dest, BSTR* filePath, BSTR* depFile, IDispatch* existing,
                                IDispatch* target) override {
    return Call([&] {
      executables_.Forget();  // the host may have changed files since the last call
      CFile file = ReadFileRecord(target, "target");
      if (existing == nullptr) {
        groups_.GetFileGroupInfo(Text(dest, "dest"), Text(filePath, "filePath"), Text(depFile, "depFile"),
                                 nullptr, file);
      } else {
        const CFile known = ReadFileRecord(existing, "existing");
        groups_.GetFileGroupInfo("", "", "", &known, file);
      }
      WriteFileRecord(target, "target", file);
    });
  }
  STDMETHODIMP CreateFileGroupName(BSTR* fileName, IDispatch* file, BSTR* groupName) override {
    return Give(groupName, [&] {
      return groups_.CreateFileGroupName(Text(fileName, "fileName"), ReadFileRecord(file, "file"));
    });
  }
  STDMETHODIMP IsSharedFile(IDispatch* file, BSTR* filePath, VARIANT_BOOL* isShared) override {
    return Give(isShared, [&] {
      return groups_.IsSharedFile(ReadFileRecord(file, "file"), Text(filePath, "filePath"));
    });
  }
  STDMETHODIMP CheckCoreCompIni(BSTR* filePath, BSTR* indexEntry) override {
    return Give(indexEntry, [&] { return groups_.CheckCoreCompIni(Text(filePath, "filePath")); });
  }
  STDMETHODIMP CheckSelfRegister(BSTR* filePath, SHORT* code) override {
    return Give(code, [&] {
      executables_.Forget();
      return groups_.CheckSelfRegister(Text(filePath, "filePath"));
    });
  }

  STDMETHODIMP CreateFileGroup(BSTR* projectDir, IDispatch* file, VARIANT_BOOL* created) override {
    return Give(created, [&] {
      const std::string folder = Folder(projectDir);
      return groups_.CreateFileGroup(folder, ReadFileRecord(file, "file"));
    });
  }
  STDMETHODIMP AddFileGroupToProject(BSTR* projectDir, IDispatch* file, VARIANT_BOOL* added) override {
    return Give(added, [&] {
      const std::string folder = Folder(projectDir);
      return groups_.AddFileGroupToProject(folder, ReadFileRecord(file, "file"));
    });
  }
  STDMETHODIMP AddFileGroupToComponent(BSTR* projectDir, IDispatch* file, VARIANT_BOOL* added) override {
    return Give(added, [&] {
      const std::string folder = Folder(projectDir);
      return groups_.AddFileGroupToComponent(folder, ReadFileRecord(file, "file"));
    });
  }

 private:
  std::string Folder(const BSTR* projectDir) {
    lists_.Forget();  // the host may have written since the last call
    return SetupFolderArgument(server(), Text(projectDir, "projectDir"), "projectDir");
  }

  NumberedKeys lists_;
  Executables executables_;
  CFileGroups groups_;
};

}  // namespace

IDispatch* MakeFileGroups(std::shared_ptr<Server> server) {
  return new FileGroupsObject(std::move(server));
}

}  // namespace bxvbwiz
