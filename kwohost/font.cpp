#include "font.h"

#include <numeric>
#include <utility>

#include "guard.h"
#include "units.h"

namespace kwohost {

/// Hears from a font object what changes.
class FontListener final : public ComObject<IPropertyNotifySink> {
public:
    explicit FontListener(std::function<void()> changed) : mChanged(std::move(changed)) {}

    /// Ignores all further changes: the font object may keep the listener.
    void Silence() { mChanged = nullptr; }

    HRESULT STDMETHODCALLTYPE OnChanged(DISPID) override {
        return Guarded([this] {
            if (mChanged) mChanged();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE OnRequestEdit(DISPID) override { return S_OK; }

private:
    std::function<void()> mChanged;
};

namespace {

ComPtr<IConnectionPoint> ChangesOf(IFont* font) {
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> changes;
    if (SUCCEEDED(font->QueryInterface(IID_PPV_ARGS(container.Out()))))
        container->FindConnectionPoint(IID_IPropertyNotifySink, changes.Out());
    return changes;
}

}  // namespace

Font::Font() {
    FONTDESC first = {};
    first.cbSizeofstruct = sizeof first;
    first.lpstrName = const_cast<LPOLESTR>(L"MS Sans Serif");
    first.cySize.int64 = 82'500;
    first.sWeight = FW_NORMAL;
    Check(OleCreateFontIndirect(&first, IID_IFont, mFont.OutVoid()));
    CountInTwips();
}

Font::~Font() {
    StopListening();
}

ComPtr<IDispatch> Font::Object() const {
    ComPtr<IDispatch> object;
    Check(mFont->QueryInterface(IID_PPV_ARGS(object.Out())));
    return object;
}

void Font::Share(IDispatch* object) {
    ComPtr<IFont> font;
    if (FAILED(object->QueryInterface(IID_IFont, font.OutVoid())))
        Fail(RuntimeError::TypeMismatch, L"This is not a font");
    StopListening();
    mFont = font;
    CountInTwips();
    if (!mChanged) return;
    Listen();
    mChanged();
}

HFONT Font::Handle() const {
    HFONT handle = nullptr;
    Check(mFont->get_hFont(&handle));
    return handle;
}

void Font::WhenChanged(std::function<void()> changed) {
    mChanged = std::move(changed);
    Listen();
}

void Font::CountInTwips() {
    constexpr LONG kTwipsPerInch = 1440;
    constexpr LONG kHimetricPerInch = 2540;
    const auto twips = static_cast<LONG>(TwipsPerPixel(Axis::Y));
    const LONG common = std::gcd(kTwipsPerInch, twips);
    // In the lowest terms: Wine computes the size from the first number alone, as if the second were 2540.
    Check(mFont->SetRatio(kTwipsPerInch / common, kHimetricPerInch * (twips / common)));
}

void Font::Listen() {
    mListener = MakeObject<FontListener>([this] { mChanged(); });
    if (const auto changes = ChangesOf(mFont.Get())) changes->Advise(mListener.Get(), &mCookie);
}

void Font::StopListening() {
    if (!mListener) return;
    mListener->Silence();
    if (const auto changes = ChangesOf(mFont.Get())) changes->Unadvise(mCookie);
    mListener.Reset();
}

}  // namespace kwohost
