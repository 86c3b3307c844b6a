#include "text_enumerator.h"

#include <algorithm>

#include "com_values.h"
#include "guard.h"

namespace kwohost {

namespace {

class TextEnumerator : public ComObject<IEnumVARIANT> {
public:
    explicit TextEnumerator(std::vector<std::wstring> texts, std::size_t next = 0)
        : mTexts(std::move(texts)), mNext(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
        if (!values || (count > 1 && !fetched)) return E_POINTER;
        if (fetched) *fetched = 0;
        return Guarded([&] {
            // Nothing is handed over unless all of it can be.
            const std::size_t wanted = std::min<std::size_t>(count, mTexts.size() - mNext);
            std::vector<Bstr> texts;
            for (std::size_t at = mNext; at < mNext + wanted; ++at)
                texts.emplace_back(mTexts[at]);
            for (Bstr& text : texts) {
                VariantInit(values);
                values->vt = VT_BSTR;
                values++->bstrVal = text.Detach();
            }
            mNext += wanted;
            if (fetched) *fetched = static_cast<ULONG>(wanted);
            return wanted == count ? S_OK : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = mTexts.size() - mNext;
        mNext += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        mNext = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
        if (!copy) return E_POINTER;
        *copy = nullptr;
        return Guarded([&] {
            *copy = MakeObject<TextEnumerator>(mTexts, mNext).Detach();
            return S_OK;
        });
    }

private:
    std::vector<std::wstring> mTexts;
    std::size_t mNext;
};

}  // namespace

ComPtr<IUnknown> EnumerateTexts(const std::vector<std::wstring>& texts) {
    return MakeObject<TextEnumerator>(texts);
}

}  // namespace kwohost
