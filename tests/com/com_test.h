#pragma once

#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>
#include <ocidl.h>
#include <oleauto.h>

#include <string>
#include <utility>
#include <vector>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/owned_variant.h"
#include "support/stand_in.h"

namespace kwo::com_test {

using com_support::As;
using com_support::Bstr;
using com_support::ComPtr;

/// Error 13 as automation clients get it.
constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);

/// A VARIANT that clears itself, as an argument that a test writes down. Its bytes are 0 where nothing is.
class Var : public com_support::OwnedVariant {
public:
    Var() : OwnedVariant(VARIANT{}) {}
    Var(const Var& other) : Var() { VariantCopy(this, const_cast<Var*>(&other)); }
    Var(Var&&) noexcept = default;
    Var& operator=(Var other) noexcept {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }

    Var(const wchar_t* text) : Var(std::wstring(text)) {}
    Var(const std::wstring& text) : Var() {
        vt = VT_BSTR;
        bstrVal = com_support::NewString(text);
    }
    Var(int number) : Var(static_cast<long>(number)) {}
    Var(long number) : Var() {
        vt = VT_I4;
        lVal = number;
    }
    Var(short number) : Var() {
        vt = VT_I2;
        iVal = number;
    }
    Var(long long number) : Var() {
        vt = VT_I8;
        llVal = number;
    }
    Var(float number) : Var() {
        vt = VT_R4;
        fltVal = number;
    }
    Var(double number) : Var() {
        vt = VT_R8;
        dblVal = number;
    }
    Var(bool value) : Var() {
        vt = VT_BOOL;
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Var(IDispatch* object) : Var() {
        vt = VT_DISPATCH;
        pdispVal = object;
        if (object != nullptr) object->AddRef();
    }

    static Var Ref(VARIANT* variable) { return Reference(VT_VARIANT, variable); }
    static Var Ref(BSTR* variable) { return Reference(VT_BSTR, variable); }
    static Var Ref(LONG* variable) { return Reference(VT_I4, variable); }
    static Var Ref(SHORT* variable) { return Reference(VT_I2, variable); }
    static Var Ref(double* variable) { return Reference(VT_R8, variable); }
    static Var Reference(VARTYPE type, void* variable) {
        Var result;
        result.vt = static_cast<VARTYPE>(VT_BYREF | type);
        result.byref = variable;
        return result;
    }
    static Var UnsignedLong(ULONG number) {
        Var result;
        result.vt = VT_UI4;
        result.ulVal = number;
        return result;
    }
    static Var Date(double days) {
        Var result(days);
        result.vt = VT_DATE;
        return result;
    }
    static Var Null() {
        Var result;
        result.vt = VT_NULL;
        return result;
    }
    static Var Error(SCODE code) {
        Var result;
        result.vt = VT_ERROR;
        result.scode = code;
        return result;
    }
    static Var Missing() { return Error(DISP_E_PARAMNOTFOUND); }

    /// The string it holds, "<not text>" when it holds none.
    std::wstring Text() const {
        if (vt != VT_BSTR) return L"<not text>";
        return std::wstring(com_support::View(bstrVal));
    }
};

constexpr UINT kNoArgument = 0xDEAD;

/// Everything that comes back from one `IDispatch::Invoke`.
struct Outcome {
    HRESULT status = E_UNEXPECTED;
    Var result;
    UINT badArgument = kNoArgument;  ///< as the callee left it: an index into the reversed arguments
    SCODE scode = 0;
    WORD code = 0;
    std::wstring source;
    std::wstring description;
};

struct NamedArgument {
    const wchar_t* name;
    Var value;
};

/// `arguments` in the order of writing; they are passed as they stand, by-reference ones reach the caller's variables.
Outcome InvokeId(IDispatch* object, DISPID id, WORD flags, const std::vector<Var>& arguments,
                 const std::vector<DISPID>& namedIds = {});

/// The same by name, in any letter case; the status of the look-up when that fails.
Outcome Invoke(IDispatch* object, const wchar_t* member, WORD flags, const std::vector<Var>& arguments = {});

Outcome Call(IDispatch* object, const wchar_t* member, const std::vector<Var>& arguments = {});
Outcome Get(IDispatch* object, const wchar_t* property, const std::vector<Var>& arguments = {});
Outcome Let(IDispatch* object, const wchar_t* property, const Var& value);
Outcome Set(IDispatch* object, const wchar_t* property, const Var& value);

/// A method call whose trailing arguments are named.
Outcome CallNamed(IDispatch* object, const wchar_t* member, const std::vector<Var>& positional,
                  const std::vector<NamedArgument>& named);

DISPID IdOf(IDispatch* object, const wchar_t* member);

/// The object of a programmatic identifier "KWOUtil." + `className`; null and a test failure when it cannot be made.
ComPtr<IDispatch> Create(const std::wstring& className);

/// The eleven classes, in no order that matters.
const std::vector<std::wstring>& ClassNames();

/// The member ran: it succeeded, or the class is not built yet and the member said so.
::testing::AssertionResult Reached(const Outcome& outcome, const std::wstring& className);

/// The error object that a failed early-bound call left, taken off the thread.
struct ErrorObject {
    bool present = false;
    std::wstring source;
    std::wstring description;
};
ErrorObject TakeErrorObject();

std::string Narrow(const std::wstring& text);
std::string Hex(HRESULT status);

/// An object that knows no member and counts its references.
using Probe = test_support::StandIn<>;

}  // namespace kwo::com_test
