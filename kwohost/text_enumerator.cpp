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
        ULONG done = 0;
        for (; done < count && mNext < mTexts.size(); ++done, ++mNext) {
            VariantInit(&values[done]);
            values[done].bstrVal = SysAllocString(mTexts[mNext].c_str());
            if (!values[done].bstrVal) break;
            values[done].vt = VT_BSTR;
        }
        if (fetched) *fetched = done;
        return done == count ? S_OK : S_FALSE;
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
