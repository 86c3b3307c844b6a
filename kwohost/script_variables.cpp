#include "script_variables.h"

#include <vector>

#include "com_support/type_description.h"

namespace kwohost {

namespace {

std::vector<DISPID> DescribedVariables(IDispatch* script) {
    std::vector<DISPID> variables;
    ComPtr<ITypeInfo> type;
    if (FAILED(script->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Out())) || !type) return variables;
    const kwo::com_support::TypeAttributes attributes(*type);
    if (!attributes) return variables;
    for (UINT i = 0; i < attributes->cVars; ++i) {
        const kwo::com_support::VariableDescription variable(*type, i);
        if (variable) variables.push_back(variable->memid);
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
