#include "script_variables.h"

#include <dispex.h>

#include <vector>

namespace kwohost {

namespace {

/// What VBScript knows as variables is in its type information.
void CollectDescribed(IDispatch* script, std::vector<DISPID>& variables) {
    ComPtr<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    if (FAILED(script->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.Receive())) || !type) return;
    if (FAILED(type->GetTypeAttr(&attributes))) return;
    const UINT count = attributes->cVars;
    type->ReleaseTypeAttr(attributes);
    for (UINT i = 0; i < count; ++i) {
        VARDESC* variable = nullptr;
        if (FAILED(type->GetVarDesc(i, &variable))) continue;
        variables.push_back(variable->memid);
        type->ReleaseVarDesc(variable);
    }
}

/// JScript's are members that come and go.
void CollectMembers(IDispatch* script, std::vector<DISPID>& variables) {
    ComPtr<IDispatchEx> members;
    if (FAILED(script->QueryInterface(IID_PPV_ARGS(members.Receive())))) return;
    for (DISPID id = DISPID_STARTENUM; members->GetNextDispID(fdexEnumDefault, id, &id) == S_OK;)
        variables.push_back(id);
}

}  // namespace

void EmptyVariables(IDispatch* script) {
    std::vector<DISPID> variables;
    CollectDescribed(script, variables);
    CollectMembers(script, variables);
    for (const DISPID variable : variables) {
        VARIANT empty;
        VariantInit(&empty);
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS params = {&empty, &put, 1, 1};
        script->Invoke(variable, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr,
                       nullptr);
    }
}

}  // namespace kwohost
