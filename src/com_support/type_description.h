#pragma once

#include <windows.h>
#include <oleauto.h>

namespace kwo::com_support {

/// A part of a type library, returned to its owner at the end. `owner` must outlive it.
template <class Owner, class Description, auto Take, auto GiveBack>
class Lent {
public:
    /// `which` says which part, where the owner has several.
    template <class... Which>
    explicit Lent(Owner& owner, Which... which) : mOwner(owner), mStatus((owner.*Take)(which..., &mDescription)) {}
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    ~Lent() {
        if (mDescription != nullptr) (mOwner.*GiveBack)(mDescription);
    }

    /// The result of asking the owner for the part.
    HRESULT Status() const { return mStatus; }
    /// False if there is no such part; then nothing else may be called.
    explicit operator bool() const { return mDescription != nullptr; }
    const Description* operator->() const { return mDescription; }

private:
    Owner& mOwner;
    Description* mDescription = nullptr;
    HRESULT mStatus;
};

using TypeAttributes = Lent<ITypeInfo, TYPEATTR, &ITypeInfo::GetTypeAttr, &ITypeInfo::ReleaseTypeAttr>;
/// One of the functions, counted from 0.
using FunctionDescription = Lent<ITypeInfo, FUNCDESC, &ITypeInfo::GetFuncDesc, &ITypeInfo::ReleaseFuncDesc>;
/// One of the variables, counted from 0.
using VariableDescription = Lent<ITypeInfo, VARDESC, &ITypeInfo::GetVarDesc, &ITypeInfo::ReleaseVarDesc>;
using LibraryAttributes = Lent<ITypeLib, TLIBATTR, &ITypeLib::GetLibAttr, &ITypeLib::ReleaseTLibAttr>;

}  // namespace kwo::com_support
