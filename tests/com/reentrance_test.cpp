#include <cstring>
#include <new>
#include <optional>

#include "box_answerer.h"
#include "com_test.h"
#include "host_box.h"
#include "overwritten_memory.h"
#include "type_library_dump.h"

namespace kwo::com_test {
namespace {

using Action = std::function<void()>;

/// One of the look-ups and calls that reach a host's objects begins with an action.
class Intrusion {
public:
    /// Runs `member` again and again, each time after `prepare`, until each of its look-ups and calls has once begun
    /// with `action`. Returns how many there are.
    int AtEveryUse(const Action& prepare, const Action& member, const Action& action) {
        for (int place = 1;; ++place) {
            mAction = nullptr;
            prepare();
            mAction = action;
            mUses = 0;
            mPlace = place;
            member();
            mAction = nullptr;
            if (mUses < place) return mUses;
        }
    }
    void Use() {
        if (!mAction || ++mUses != mPlace) return;
        const Action action = std::exchange(mAction, nullptr);
        action();
    }

private:
    Action mAction;
    int mUses = 0;
    int mPlace = 0;
};

/// A host's object that ends with its last reference.
template <class Object>
class Owned final : public Object {
public:
    template <class... Arguments>
    explicit Owned(Intrusion& intrusion, Arguments... arguments) : Object(arguments...), mIntrusion(intrusion) {}

    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = Object::Release();
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        mIntrusion.Use();
        return Object::GetIDsOfNames(iid, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* info, UINT* bad) override {
        mIntrusion.Use();
        return Object::Invoke(id, iid, locale, flags, parameters, result, info, bad);
    }
    void* operator new(std::size_t size) { return ::operator new(size); }
    void operator delete(void* block, std::size_t size) {
        std::memset(block, 0xDD, size);
        ::operator delete(block);
    }

private:
    Intrusion& mIntrusion;
};

class Reentrance : public ::testing::Test {
protected:
    void SetUp() override {
        mKeepsTheDll = Create(L"KWOPicBtn");
        mMemory.emplace();
        ASSERT_TRUE(*mMemory) << "the DLL frees with another function";
    }
    void TearDown() override {
        EXPECT_GT(OverwrittenMemory::Freed(), 100) << "the instrument sees what is freed";
        mObject.Reset();
        if (mWindow != nullptr) DestroyWindow(mWindow);
    }

    template <class Object, class... Arguments>
    ComPtr<Owned<Object>> New(Arguments... arguments) {
        auto* const made = new Owned<Object>(mIntrusion, arguments...);
        made->AddRef();
        return ComPtr<Owned<Object>>::Adopt(made);
    }
    template <class Object>
    static Var Given(const ComPtr<Object>& object) {
        return Var(static_cast<IDispatch*>(object.Get()));
    }

    ComPtr<Owned<MemberObject>> NewForm() {
        auto form = New<MemberObject>();
        form->Property(L"WindowState", Var(0));
        for (const wchar_t* const name : {L"OnChangeMonth", L"OnChangeDate", L"OnButtonClick"})
            form->Method(name, [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        return form;
    }
    Var NewBox(int width, int height) {
        const auto form = NewForm();
        // A window of its own for each would take most of the time.
        if (mWindow == nullptr) mWindow = HostBox::NewWindow(width, height);
        const auto box = New<HostBox>(width, height, static_cast<IDispatch*>(form.Get()), mWindow);
        const auto font = New<MemberObject>();
        font->Property(L"Bold", Var(false));
        box->values[L"Font"] = Given(font);
        return Given(box);
    }
    Var NewPane() {
        const auto container = New<MemberObject>();
        container->Property(L"hWnd", Var(++mNextWindow));
        container->Property(L"ScaleMode", Var(1));
        container->Property(L"ScaleWidth", Var(6000.0));
        container->Property(L"ScaleHeight", Var(4000.0));
        for (const wchar_t* const name : {L"ScaleX", L"ScaleY"}) {
            container->Method(name, [](MemberObject::Arguments&, VARIANT* result) {
                result->vt = VT_R4;
                result->fltVal = 15;
                return S_OK;
            });
        }
        const auto pane = New<MemberObject>();
        pane->Property(L"Container", Given(container));
        pane->Property(L"Parent", Given(NewForm()));
        for (const wchar_t* const name : {L"Left", L"Top", L"Width", L"Height"})
            pane->Property(name, Var(600.0));
        pane->Method(L"Move", [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        return Given(pane);
    }
    Var NewPicture(int type) {
        const auto picture = New<PictureLike>();
        picture->type = type;
        return Given(picture);
    }

    Intrusion mIntrusion;
    ComPtr<IDispatch> mKeepsTheDll;
    ComPtr<IDispatch> mObject;
    long mNextWindow = 900;
    HWND mWindow = nullptr;

    /// What is tried with `member`: each use begins with another Create, with `change` and with the last release.
    void Try(const Action& prepare, const std::vector<Action>& members, const Action& create, const Action& change) {
        for (const Action& member : members) {
            EXPECT_GE(mIntrusion.AtEveryUse(prepare, member, create), 2);
            create();
            mIntrusion.AtEveryUse(prepare, member, change);
            create();
            mIntrusion.AtEveryUse(prepare, member, [this] { mObject.Reset(); });
        }
    }
    /// A member of the object as it is now; the call holds no reference of its own.
    Action Member(const wchar_t* name, std::vector<Var> arguments = {}) {
        return [this, name, arguments] { Call(mObject.Get(), name, arguments); };
    }
    void CallIfThere(const wchar_t* name, const std::vector<Var>& arguments) {
        if (mObject) Call(mObject.Get(), name, arguments);
    }

private:
    /// A picture by its dispatch identifiers.
    class PictureLike : public MemberObject {
    public:
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
            if (iid != IID_IPictureDisp) return MemberObject::QueryInterface(iid, object);
            AddRef();
            *object = static_cast<IDispatch*>(this);
            return S_OK;
        }
        STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
            result->vt = VT_I4;
            result->lVal = id == 3 ? type : 0;
            return S_OK;
        }
        LONG type = 3;
    };

    std::optional<OverwrittenMemory> mMemory;
};

TEST_F(Reentrance, OfACalendar) {
    const Action create = [this] {
        CallIfThere(L"Create", {NewBox(120, 100), Var::Date(46'347), Var::Missing(), true, Var::Missing(), true});
    };
    const Action prepare = [&] {
        mObject = Create(L"KWOMonthView");
        create();
    };
    const Action change = [this] {
        if (mObject) Let(mObject.Get(), L"MinDate", Var::Date(46'400));
    };
    Try(prepare, {create, Member(L"ShowMonth", {3, 2027}), Member(L"KeyDown", {32, 0})}, create, change);
}

TEST_F(Reentrance, OfAButton) {
    std::wstring caption;
    const Action create = [&] {
        caption += std::wstring(40, L'x');
        CallIfThere(L"Create", {NewBox(80, 30), caption});
    };
    const Action prepare = [&] {
        mObject = Create(L"KWOPicBtn");
        caption = L"&Save";
        create();
        CallIfThere(L"MouseDown", {1, 0, 0, 0});
    };
    const Action change = [this] {
        if (mObject) Let(mObject.Get(), L"Caption", std::wstring(1000, L'y'));
    };
    Try(prepare,
        {create, Member(L"MouseUp", {1, 0, 0, 0}), Member(L"LostFocus"), Member(L"GotFocus"),
         Member(L"MouseMove", {1, 0, -900, 0}), Member(L"Resize")},
        create, change);
}

TEST_F(Reentrance, OfASplitter) {
    BoxAnswerer user;
    const Action create = [this] { CallIfThere(L"Create", {NewPane(), NewPane(), NewPane()}); };
    const Action prepare = [&] {
        mObject = Create(L"KWOSplitterV");
        create();
        CallIfThere(L"MouseDown", {1, 0, 30, 0});
    };
    const Action change = [this] {
        CallIfThere(L"Create", {NewPane(), NewPane(), Var(static_cast<IDispatch*>(nullptr))});
    };
    Try(prepare,
        {create, Member(L"Resize"), Member(L"MouseDown", {1, 0, 30, 0}), Member(L"MouseMove", {1, 0, 900, 0}),
         Member(L"MouseUp", {1, 0, 900, 0})},
        create, change);
}

TEST_F(Reentrance, OfATrayIcon) {
    const Action create = [this] { CallIfThere(L"Create", {1, NewPicture(3), L"tip"}); };
    const Action prepare = [&] {
        mObject = Create(L"KWOSysTray");
        create();
    };
    const Action set = [this] {
        if (mObject) Set(mObject.Get(), L"Icon", NewPicture(3));
    };
    for (const Action& member : {create, set}) {
        for (const Action& intrusion : {create, set, Action([this] { mObject.Reset(); })})
            EXPECT_GE(mIntrusion.AtEveryUse(prepare, member, intrusion), 2);
    }
}

TEST_F(Reentrance, OfATimersCallbacks) {
    const auto callback = [this](const wchar_t* member) {
        const auto object = New<MemberObject>();
        object->Method(member, [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        return Given(object);
    };
    const Action others = [&] {
        if (mObject) Set(mObject.Get(), L"TimerEvents", callback(L"Tick"));
        if (mObject) Set(mObject.Get(), L"AlarmEvents", callback(L"Alarm"));
    };
    const Action prepare = [&] {
        mObject = Create(L"KWOTimer");
        others();
    };
    const Action none = [this] { CallIfThere(L"CancelTimers", {}); };
    for (const Action& member : {others, Member(L"TimerTick", {1, 0}), Member(L"TimerTick", {2, 7})}) {
        for (const Action& intrusion : {others, none, Action([this] { mObject.Reset(); })})
            EXPECT_GE(mIntrusion.AtEveryUse(prepare, member, intrusion), 1);
    }
}

TEST_F(Reentrance, OfATimersSinks) {
    const IID events = TypeAttributes(*TypeInfoOf(TypeLibraryOfTheDll().Get(), L"__KWOTimer"))->guid;
    std::vector<DWORD> cookies;
    const auto point = [&] {
        ComPtr<IConnectionPoint> found;
        const auto container = As<IConnectionPointContainer>(mObject.Get(), IID_IConnectionPointContainer);
        container->FindConnectionPoint(events, found.Out());
        return found;
    };
    const Action connect = [&] {
        if (!mObject) return;
        const auto sink = New<MemberObject>();
        for (const wchar_t* const name : {L"Tick", L"Alarm"})
            sink->Method(name, [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        DWORD cookie = 0;
        point()->Advise(sink.Get(), &cookie);
        cookies.push_back(cookie);
    };
    // As the other members here: the call holds no reference of its own.
    const Action connectUncounted = [&] {
        const auto sink = New<MemberObject>();
        sink->Method(L"Tick", [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        IConnectionPoint* const uncounted = point().Get();
        DWORD cookie = 0;
        uncounted->Advise(sink.Get(), &cookie);
    };
    const Action disconnect = [&] {
        for (const DWORD cookie : std::exchange(cookies, {})) {
            if (mObject) point()->Unadvise(cookie);
        }
    };
    const Action prepare = [&] {
        cookies.clear();
        mObject = Create(L"KWOTimer");
        connect();
        connect();
    };
    for (const Action& member :
         {connect, connectUncounted, Member(L"TimerTick", {1, 0}), Member(L"TimerTick", {2, 7})}) {
        for (const Action& intrusion : {connect, disconnect, Action([this] { mObject.Reset(); })})
            EXPECT_GE(mIntrusion.AtEveryUse(prepare, member, intrusion), 1);
    }
}

/// An object that is worth a number.
class WorthANumber : public MemberObject {
public:
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        result->vt = VT_I4;
        result->lVal = 500;
        return S_OK;
    }
};

TEST_F(Reentrance, OfAnArgumentThatIsConverted) {
    const Action create = [this] { mObject = Create(L"KWOTimer"); };
    const Action assign = [this] { Let(mObject.Get(), L"Interval", Given(New<WorthANumber>())); };
    // A timer is freed in three blocks; the instrument wants to see more.
    for (int round = 0; round < 50; ++round)
        EXPECT_EQ(mIntrusion.AtEveryUse(create, assign, [this] { mObject.Reset(); }), 1);
}

TEST_F(Reentrance, OfAFormThatIsPlaced) {
    mObject = Create(L"KWOUtility");
    const auto place = [this] { CallIfThere(L"KWO_CenterForm", {NewPane(), NewPane()}); };
    EXPECT_GE(mIntrusion.AtEveryUse([this] { mObject = Create(L"KWOUtility"); }, place, [this] { mObject.Reset(); }),
              8);
}

}  // namespace
}  // namespace kwo::com_test
