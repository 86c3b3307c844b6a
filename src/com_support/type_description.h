#pragma once

#include <windows.h>
#include <oleauto.h>

namespace kwo::com_support {

/// A part of a type library that its owner lends out and wants back. `owner` must outlive it.
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

    /// What the owner answered when it was asked for the part.
    HRESULT Status() const { return mStatus; }
    /// False when there is no such part: nothing else may be asked then.
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
