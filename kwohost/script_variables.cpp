#include "script_variables.h"

#include <vector>

namespace kwohost {

namespace {

std::vector<DISPID> DescribedVariables(IDispatch* script) {
    std::vector<DISPID> variables;
    ComPtr<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    if (FAILED(script->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Receive())) || !type) return variables;
    if (FAILED(type->GetTypeAttr(&attributes))) return variables;
    const UINT count = attributes->cVars;
    type->ReleaseTypeAttr(attributes);
    for (UINT i = 0; i < count; ++i) {
        VARDESC* variable = nullptr;
        if (FAILED(type->GetVarDesc(i, &variable))) continue;
        variables.push_back(variable->memid);
        type->ReleaseVarDesc(variable);
    }
    return variables;
}

}  // namespace

void EmptyVariables(IDispatch* script) {
    for (const DISPID variable : DescribedVariables(script)) {
        VARIANT empty;
        VariantInit(&empty);
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS params = {&empty, &put, 1, 1};
        script->Invoke(variable, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr,
                       nullptr);
    }
}

}  // namespace kwohost
