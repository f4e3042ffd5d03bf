#include "com/Dispatch.h"

#include <algorithm>
#include <vector>

#include "com/ComError.h"
#include "com/ComText.h"
#include "support/Errors.h"

namespace bxvbwiz {
namespace {

// A function's description, released with its owner.
class FunctionDescription {
 public:
  FunctionDescription(ITypeInfo& info, DISPID member, WORD flags) : info_(info) {
    TYPEATTR* attributes = nullptr;
    if (FAILED(info.GetTypeAttr(&attributes))) return;
    const UINT count = attributes->cFuncs;
    info.ReleaseTypeAttr(attributes);
    for (UINT index = 0; index < count; ++index) {
      if (FAILED(info.GetFuncDesc(index, &function_))) continue;
      if (function_->memid == member && (function_->invkind & flags) != 0) return;
      info.ReleaseFuncDesc(function_);
      function_ = nullptr;
    }
  }
  ~FunctionDescription() {
    if (function_ != nullptr) info_.ReleaseFuncDesc(function_);
  }
  FunctionDescription(const FunctionDescription&) = delete;
  FunctionDescription& operator=(const FunctionDescription&) = delete;

  const FUNCDESC* Get() const { return function_; }
  bool IsPut() const { return function_->invkind == INVOKE_PROPERTYPUT; }
  UINT ParameterCount() const { return static_cast<UINT>(function_->cParams); }

 private:
  ITypeInfo& info_;
  FUNCDESC* function_ = nullptr;
};

// The call's arguments in the parameters' order and types.
class Arguments {
 public:
  Arguments(const FunctionDescription& function, const DISPPARAMS& given, LCID locale)
      : function_(function), given_(given), locale_(locale), values_(function.ParameterCount()) {}

  // S_OK, or what is wrong: at `position` in the call, the `parameter` of the function, both from 0.
  HRESULT Coerce(UINT& position, UINT& parameter) {
    const HRESULT order = FindOrder(position);
    for (parameter = 0; SUCCEEDED(order) && parameter < values_.size(); ++parameter) {
      position = source_[parameter];
      const HRESULT code = CoerceOne(parameter, given_.rgvarg[position]);
      if (FAILED(code)) return code;
    }
    return order;
  }

  // In the order that DispInvoke takes them: the last one first.
  std::vector<VARIANT> ForCall() {
    std::vector<VARIANT> arguments;
    for (UINT i = static_cast<UINT>(values_.size()); i-- > 0;) {
      VARIANT argument = values_[i];  // still owned by values_
      if (IsByReference(i)) {
        argument.byref = &values_[i].byref;
        argument.vt = static_cast<VARTYPE>(values_[i].vt | VT_BYREF);
      }
      arguments.push_back(argument);
    }
    return arguments;
  }

  // Copies what the method left in its parameters to the host's variables.
  void GiveBack() {
    for (UINT i = 0; i < values_.size(); ++i) {
      VARIANT& target = given_.rgvarg[source_[i]];
      if (!IsByReference(i) || values_[i].vt == VT_BSTR || (target.vt & VT_BYREF) == 0) continue;
      if (target.vt == (VT_BYREF | VT_VARIANT)) {
        VariantCopy(target.pvarVal, &values_[i]);
      } else {
        StoreAs(target, values_[i]);
      }
    }
  }

 private:
  HRESULT FindOrder(UINT& position) {
    const UINT named = function_.IsPut() ? 0 : given_.cNamedArgs;
    if (given_.cArgs != values_.size() || named > given_.cArgs) return DISP_E_BADPARAMCOUNT;
    constexpr UINT kNone = ~0U;
    source_.assign(values_.size(), kNone);
    for (UINT i = 0; i < given_.cArgs; ++i) {
      const UINT parameter =
          i < named ? static_cast<UINT>(given_.rgdispidNamedArgs[i]) : given_.cArgs - 1 - i;
      position = i;
      if (parameter >= source_.size() || source_[parameter] != kNone) return DISP_E_PARAMNOTFOUND;
      source_[parameter] = i;
    }
    return S_OK;
  }

  const TYPEDESC& TypeOf(UINT i) const {
    const TYPEDESC& type = function_.Get()->lprgelemdescParam[i].tdesc;
    return type.vt == VT_PTR ? *type.lptdesc : type;
  }
  bool IsByReference(UINT i) const { return function_.Get()->lprgelemdescParam[i].tdesc.vt == VT_PTR; }

  HRESULT CoerceOne(UINT i, VARIANT& given) {
    OwnedVariant& value = values_[i];
    const HRESULT copied = VariantCopyInd(&value, &given);
    if (FAILED(copied)) return copied;
    const VARTYPE wanted = TypeOf(i).vt;
    // An object variable that was never set is Nothing, and so is an argument that is left out.
    const bool isLeftOut = value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
    if (wanted == VT_DISPATCH && (value.vt == VT_EMPTY || value.vt == VT_NULL || isLeftOut)) {
      value.vt = VT_DISPATCH;
      value.pdispVal = nullptr;
      return S_OK;
    }
    return VariantChangeTypeEx(&value, &value, locale_, 0, wanted);
  }

  // Into a variable of a fixed type other than a text.
  void StoreAs(VARIANT& target, VARIANT& value) {
    OwnedVariant converted;
    if (FAILED(VariantChangeTypeEx(&converted, &value, locale_, 0, target.vt & VT_TYPEMASK))) return;
    switch (target.vt & VT_TYPEMASK) {
      case VT_BOOL:
      case VT_I2:
        *target.piVal = converted.iVal;
        break;
      case VT_I4:
        *target.plVal = converted.lVal;
        break;
      default:
        break;  // no host keeps a Boolean in anything else
    }
  }

  const FunctionDescription& function_;
  const DISPPARAMS& given_;
  LCID locale_;
  std::vector<OwnedVariant> values_;
  std::vector<UINT> source_;  // by parameter, the argument's position in the call
};

// The code by which every host reads the number of the run-time error. Some script engines translate only
// some of the dispatch codes.
HRESULT RunTimeErrorOf(HRESULT conversion) {
  if (conversion == DISP_E_TYPEMISMATCH) return RunTimeErrorCode(kErrorTypeMismatch);
  return conversion == DISP_E_OVERFLOW ? RunTimeErrorCode(kErrorOverflow) : conversion;
}

// Says which argument is wrong. `parameter` counts from 0. `exception` may be null.
HRESULT RefuseArgument(ITypeInfo& info, DISPID member, UINT parameter, HRESULT code, EXCEPINFO* exception) {
  if (exception == nullptr) return code;
  std::vector<BSTR> names(parameter + 2, nullptr);
  UINT count = 0;
  info.GetNames(member, names.data(), static_cast<UINT>(names.size()), &count);
  const std::string method = FromBstr(names.front());
  const std::string name =
      count == names.size() ? FromBstr(names.back()) : "number " + std::to_string(parameter + 1);
  std::for_each(names.begin(), names.end(), SysFreeString);
  *exception = EXCEPINFO{};
  exception->bstrDescription = ToBstr(method + ": the argument " + name + " has the wrong type");
  exception->bstrSource = SysAllocString(L"BX6VBWiz");
  exception->scode = RunTimeErrorOf(code);
  return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT InvokeTyped(ITypeInfo& description, void* instance, DISPID member, LCID locale, WORD flags,
                    DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
  if (parameters == nullptr || (parameters->cArgs > 0 && parameters->rgvarg == nullptr) ||
      (parameters->cNamedArgs > 0 && parameters->rgdispidNamedArgs == nullptr)) {
    return E_INVALIDARG;
  }
  const FunctionDescription function(description, member, flags);
  if (function.Get() == nullptr) return DISP_E_MEMBERNOTFOUND;
  Arguments arguments(function, *parameters, locale);
  UINT position = 0;
  UINT parameter = 0;
  const HRESULT code = arguments.Coerce(position, parameter);
  if (FAILED(code)) {
    if (code == DISP_E_BADPARAMCOUNT) return code;
    if (wrongArgument != nullptr) *wrongArgument = position;
    return code == DISP_E_PARAMNOTFOUND ? code
                                        : RefuseArgument(description, member, parameter, code, exception);
  }
  std::vector<VARIANT> values = arguments.ForCall();
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS coerced{values.data(), &put, static_cast<UINT>(values.size()), function.IsPut() ? 1U : 0U};
  const HRESULT called =
      DispInvoke(instance, &description, member, static_cast<WORD>(function.Get()->invkind), &coerced, result,
                 exception, wrongArgument);
  if (SUCCEEDED(called)) arguments.GiveBack();
  return called;
}

}  // namespace bxvbwiz
