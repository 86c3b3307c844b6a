#include "com_support/com_ptr.h"

#include <gtest/gtest.h>

#include "support/stand_in.h"

namespace kwo::com_support {
namespace {

using test_support::StandIn;

TEST(ComPtrTest, HoldsOneReferenceForAsLongAsItLives) {
    StandIn object;
    {
        const ComPtr<IDispatch> first(&object);
        EXPECT_EQ(object.references, 1u);
        const ComPtr<IDispatch> second(first);
        EXPECT_EQ(object.references, 2u);
    }
    EXPECT_EQ(object.references, 0u);
}

TEST(ComPtrTest, MovesHandTheReferenceOver) {
    StandIn object;
    ComPtr<IDispatch> first(&object);
    ComPtr<IDispatch> second(std::move(first));
    EXPECT_FALSE(first);
    EXPECT_EQ(object.references, 1u);
    StandIn other;
    ComPtr<IDispatch> third(&other);
    third = std::move(second);
    EXPECT_EQ(third.Get(), &object);
    EXPECT_EQ(other.references, 0u);
    EXPECT_EQ(object.references, 1u);
}

TEST(ComPtrTest, SurvivesItsOwnAssignment) {
    StandIn object;
    ComPtr<IDispatch> pointer(&object);
    const ComPtr<IDispatch>& same = pointer;
    pointer = same;
    EXPECT_EQ(pointer.Get(), &object);
    EXPECT_EQ(object.references, 1u);
}

TEST(ComPtrTest, AdoptsAndDetachesWithoutCounting) {
    StandIn object;
    object.AddRef();
    auto pointer = ComPtr<IDispatch>::Adopt(&object);
    EXPECT_EQ(object.references, 1u);
    EXPECT_EQ(pointer.Detach(), &object);
    EXPECT_FALSE(pointer);
    EXPECT_EQ(object.references, 1u);
}

TEST(ComPtrTest, GivesUpWhatItHeldBeforeACallHandsAnotherOver) {
    StandIn object;
    ComPtr<IDispatch> pointer(&object);
    EXPECT_EQ(*pointer.Out(), nullptr);
    EXPECT_EQ(object.references, 0u);
}

TEST(ComPtrTest, ResetAnswersWhatTheObjectAnswers) {
    StandIn object;
    ComPtr<IDispatch> first(&object);
    ComPtr<IDispatch> second(&object);
    EXPECT_EQ(first.Reset(), 1u);
    EXPECT_EQ(second.Reset(), 0u);
    EXPECT_EQ(second.Reset(), 0u) << "null";
}

TEST(ComPtrTest, IsNullWhileItsObjectIsReleased) {
    class Asking final : public StandIn<> {
    public:
        STDMETHODIMP_(ULONG) Release() override {
            holderWasNull = !*holder;
            return StandIn::Release();
        }
        const ComPtr<IDispatch>* holder = nullptr;
        bool holderWasNull = false;
    } object;
    ComPtr<IDispatch> pointer(&object);
    object.holder = &pointer;
    pointer.Reset();
    EXPECT_TRUE(object.holderWasNull);
}

TEST(ComPtrTest, CopyToGivesAReferenceToTheCaller) {
    StandIn object;
    const ComPtr<IDispatch> pointer(&object);
    IDispatch* copy = nullptr;
    EXPECT_EQ(pointer.CopyTo(&copy), S_OK);
    EXPECT_EQ(copy, &object);
    EXPECT_EQ(object.references, 2u);
    EXPECT_EQ(pointer.CopyTo(nullptr), E_POINTER);
    copy->Release();
}

TEST(ComPtrTest, InOutShowsItsReferenceAndTakesAnother) {
    StandIn first;
    StandIn second;
    {
        ComPtr<IDispatch> pointer(&first);
        IDispatch** const place = pointer.InOut();
        EXPECT_EQ(*place, &first);
        (*place)->Release();
        *place = &second;
        second.AddRef();
        EXPECT_EQ(pointer.Get(), &second);
    }
    EXPECT_EQ(first.references, 0u);
    EXPECT_EQ(second.references, 0u);
}

TEST(ComPtrTest, FindsOtherInterfacesOfTheObject) {
    StandIn object;
    const ComPtr<IUnknown> pointer(&object);
    {
        const auto dispatch = pointer.As<IDispatch>();
        EXPECT_EQ(dispatch.Get(), &object);
        EXPECT_EQ(object.references, 2u);
    }
    EXPECT_EQ(object.references, 1u);
    EXPECT_FALSE(pointer.As<IErrorInfo>());
    EXPECT_FALSE(ComPtr<IUnknown>().As<IDispatch>());
    EXPECT_EQ(object.references, 1u);
}

TEST(ComPtrTest, ABaseInterfaceIsHeldToo) {
    StandIn object;
    const ComPtr<IDispatch> pointer(&object);
    const ComPtr<IUnknown> base = pointer;
    EXPECT_EQ(base.Get(), &object);
    EXPECT_EQ(object.references, 2u);
}

TEST(ComPtrTest, WhatAFailingQueryLeavesIsNotReleased) {
    class Confused final : public StandIn<> {
    public:
        STDMETHODIMP QueryInterface(REFIID, void** object) override {
            *object = this;
            return E_NOINTERFACE;
        }
    } object;
    object.AddRef();
    EXPECT_FALSE(As<IDispatch>(&object));
    EXPECT_EQ(object.references, 1u);
}

}  // namespace
}  // namespace kwo::com_support
