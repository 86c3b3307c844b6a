#include "com_support/com_object.h"

#include <oleauto.h>

#include <gtest/gtest.h>

#include <atomic>

namespace kwo::com_support {
namespace {

template <class Counter>
class Counted final : public ComObject<ISupportErrorInfo, Counter> {
public:
    explicit Counted(int& alive) : mAlive(alive) { ++mAlive; }
    ~Counted() override { --mAlive; }
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }

private:
    bool AlsoAnswers(REFIID id) const override { return id == IID_IErrorLog; }
    int& mAlive;
};

TEST(ComObjectTest, LivesAsLongAsSomebodyHoldsIt) {
    int alive = 0;
    auto first = MakeObject<Counted<ULONG>>(alive);
    EXPECT_EQ(alive, 1);
    auto second = first;
    EXPECT_EQ(first.Reset(), 1u);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(second.Reset(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST(ComObjectTest, AnAtomicCounterCountsTheSame) {
    int alive = 0;
    auto object = MakeObject<Counted<std::atomic<ULONG>>>(alive);
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_EQ(object.Reset(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST(ComObjectTest, AnswersItsInterfaceAndItsOtherNamesAndNothingElse) {
    int alive = 0;
    const auto object = MakeObject<Counted<ULONG>>(alive);
    EXPECT_TRUE(object.As<IUnknown>());
    EXPECT_TRUE(object.As<ISupportErrorInfo>());
    EXPECT_TRUE(object.As<IUnknown>(IID_IErrorLog));
    void* found = &alive;
    EXPECT_EQ(object->QueryInterface(IID_IDispatch, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

}  // namespace
}  // namespace kwo::com_support
