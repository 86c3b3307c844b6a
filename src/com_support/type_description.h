#pragma once

#include <windows.h>
#include <oleauto.h>

namespace kwo::com_support {

/// A part of a type library, returned to its owner at the end:
///
///     const TypeAttributes attributes(info);
///     if (attributes) count = attributes->cFuncs;
///
/// `owner` must outlive it.
template <class Owner, class Description, auto Take, auto GiveBack>
class Lent {
public:
    /// Asks for the part.
    /// `which` says which one, where the owner has several. There may be none: look at the object as a bool.
    template <class... Which>
    explicit Lent(Owner& owner, Which... which) : mOwner(owner), mStatus((owner.*Take)(which..., &mDescription)) {}
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    /// Returns the part to its owner, if there is one.
    ~Lent() {
        if (mDescription != nullptr) (mOwner.*GiveBack)(mDescription);
    }

    /// The result of asking the owner for the part.
    HRESULT Status() const { return mStatus; }
    /// False if there is no such part; then nothing else may be called.
    explicit operator bool() const { return mDescription != nullptr; }
    /// The part, valid as long as this object.
    const Description* operator->() const { return mDescription; }

private:
    Owner& mOwner;
    Description* mDescription = nullptr;
    HRESULT mStatus;
};

/// What kind of type it is, its identifier, and how many functions and variables it has.
using TypeAttributes = Lent<ITypeInfo, TYPEATTR, &ITypeInfo::GetTypeAttr, &ITypeInfo::ReleaseTypeAttr>;
/// One of the functions of a type, counted from 0.
using FunctionDescription = Lent<ITypeInfo, FUNCDESC, &ITypeInfo::GetFuncDesc, &ITypeInfo::ReleaseFuncDesc>;
/// One of the variables of a type, counted from 0.
using VariableDescription = Lent<ITypeInfo, VARDESC, &ITypeInfo::GetVarDesc, &ITypeInfo::ReleaseVarDesc>;
/// Identifier, version and language of a type library.
using LibraryAttributes = Lent<ITypeLib, TLIBATTR, &ITypeLib::GetLibAttr, &ITypeLib::ReleaseTLibAttr>;

}  // namespace kwo::com_support
