#pragma once

#include <map>
#include <string>
#include <vector>

#include "com_test.h"

namespace kwo::com_test {

/// An object with properties by name, as hosts have them; on the test's stack. What it was told is remembered.
class PropertyObject : public test_support::StandIn<> {
public:
    explicit PropertyObject(std::map<std::wstring, Var> properties) : mProperties(std::move(properties)) {}

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        DISPID id = kFirstId;
        for (const auto& [name, value] : mProperties) {
            if (lstrcmpiW(name.c_str(), names[0]) == 0) {
                *ids = id;
                return S_OK;
            }
            ++id;
        }
        *ids = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        auto at = mProperties.begin();
        if (id < kFirstId || id >= kFirstId + static_cast<DISPID>(mProperties.size())) return DISP_E_MEMBERNOTFOUND;
        std::advance(at, id - kFirstId);
        if ((flags & DISPATCH_PROPERTYPUT) != 0) {
            VariantCopyInd(&at->second, &parameters->rgvarg[0]);
            told.push_back(at->first);
            return S_OK;
        }
        return VariantCopy(result, &at->second);
    }

    Var& operator[](const std::wstring& name) { return mProperties.at(name); }
    float Single(const std::wstring& name) {
        Var value;
        VariantChangeType(&value, &mProperties.at(name), 0, VT_R4);
        return value.fltVal;
    }

    /// The properties that were put, in order.
    std::vector<std::wstring> told;

private:
    static constexpr DISPID kFirstId = 100;

    std::map<std::wstring, Var> mProperties;
};

}  // namespace kwo::com_test
