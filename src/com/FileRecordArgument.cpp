#include "com/FileRecordArgument.h"

#include <dispex.h>

#include "com/ComError.h"
#include "com/ComPtr.h"
#include "com/ComText.h"
#include "support/Errors.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {
namespace {

constexpr long kErrorNoProperty = 438;  // object doesn't support this property or method

// A property of a host's object. An object of a script engine is asked through IDispatchEx, as the engine
// itself asks: IDispatch does not know all of its properties.
class Property {
 public:
  Property(IDispatch& object, const char* argument, const char* name)
      : object_(object), what_("the property " + std::string(name) + " of the argument " + argument) {
    object.QueryInterface(IID_IDispatchEx, scriptObject_.ReceiveVoid());
    if (FAILED(Find(Widen(name)))) {
      throw ComError(RunTimeErrorCode(kErrorNoProperty),
                     "The argument " + std::string(argument) + " has no property " + name);
    }
  }

  // The value in the wanted type.
  OwnedVariant Read(VARTYPE type) {
    DISPPARAMS none{};
    OwnedVariant value;
    Invoke(DISPATCH_PROPERTYGET, none, &value, "cannot be read");
    const HRESULT code = VariantChangeTypeEx(&value, &value, LOCALE_USER_DEFAULT, 0, type);
    if (FAILED(code)) throw ComError(RunTimeErrorCode(kErrorTypeMismatch), Sentence("has the wrong type"));
    return value;
  }

  void Write(VARIANT value) {
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&value, &put, 1, 1};
    Invoke(DISPATCH_PROPERTYPUT, parameters, nullptr, "cannot be written");
  }

 private:
  std::string Sentence(const std::string& failure) const { return "T" + what_.substr(1) + " " + failure; }

  HRESULT Find(std::wstring name) {
    if (scriptObject_) {
      BSTR text = SysAllocString(name.c_str());
      const HRESULT code = scriptObject_->GetDispID(text, fdexNameCaseInsensitive, &id_);
      SysFreeString(text);
      return code;
    }
    LPOLESTR names[] = {name.data()};
    return object_.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id_);
  }

  HRESULT Call(WORD flags, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO& exception) {
    if (scriptObject_) {
      return scriptObject_->InvokeEx(id_, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception,
                                     nullptr);
    }
    return object_.Invoke(id_, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception,
                          nullptr);
  }

  void Invoke(WORD flags, DISPPARAMS& parameters, VARIANT* result, const char* failure) {
    EXCEPINFO exception{};
    const HRESULT code = Call(flags, parameters, result, exception);
    if (SUCCEEDED(code)) return;
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    std::string text = Sentence(failure);
    if (exception.bstrDescription != nullptr) text += ": " + FromBstr(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    // An exception need not have a code.
    const bool isException = code == DISP_E_EXCEPTION;
    throw ComError(isException && FAILED(exception.scode) ? exception.scode : (isException ? E_FAIL : code),
                   text);
  }

  IDispatch& object_;
  ComPtr<IDispatchEx> scriptObject_;  // none for other objects
  std::string what_;
  DISPID id_ = DISPID_UNKNOWN;
};

}  // namespace

CFile ReadFileRecord(IDispatch* object, const char* argument) {
  if (object == nullptr) {
    throw ComError(RunTimeErrorCode(kErrorObjectNotSet),
                   "The argument " + std::string(argument) + " is Nothing; it must be a file record");
  }
  const auto text = [&](const char* name) {
    const OwnedVariant value = Property(*object, argument, name).Read(VT_BSTR);
    return FromBstr(value.bstrVal);
  };
  const auto truth = [&](const char* name) {
    return Property(*object, argument, name).Read(VT_BOOL).boolVal != VARIANT_FALSE;
  };
  CFile file;
  file.FileName = text("FileName");
  file.Destination = text("Destination");
  file.SharedFile = truth("SharedFile");
  file.SelfRegister = Property(*object, argument, "SelfRegister").Read(VT_I4).lVal;
  file.FileLinkPath = text("FileLinkPath");
  file.LinkResolves = truth("LinkResolves");
  file.FileGroup = text("FileGroup");
  return file;
}

void WriteFileRecord(IDispatch* object, const char* argument, const CFile& file) {
  const auto write = [&](const char* name, VARTYPE type, const auto& set) {
    OwnedVariant value;
    set(value);
    value.vt = type;
    Property(*object, argument, name).Write(value);
  };
  const auto text = [&](const char* name, const std::string& now) {
    write(name, VT_BSTR, [&](VARIANT& value) { value.bstrVal = ToBstr(now); });
  };
  const auto truth = [&](const char* name, bool now) {
    write(name, VT_BOOL, [&](VARIANT& value) { value.boolVal = now ? VARIANT_TRUE : VARIANT_FALSE; });
  };
  text("Destination", file.Destination);
  truth("SharedFile", file.SharedFile);
  text("FileLinkPath", file.FileLinkPath);
  truth("LinkResolves", file.LinkResolves);
  write("SelfRegister", VT_I4, [&](VARIANT& value) { value.lVal = file.SelfRegister; });
  text("FileGroup", file.FileGroup);
}

}  // namespace bxvbwiz
