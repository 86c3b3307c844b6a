#include "label.h"

#include "form.h"

namespace kwohost {

Label::Label(ScriptHost& host, Form& form, std::wstring name) : PaintedControl(host, form, std::move(name), false) {
    AddVariable(
        L"Caption", [this](Call& call) { call.ReturnText(mCaption); },
        [this](Call& call) {
            mCaption = call.Text(0);
            Changed();
        });
    AddVariable(
        L"Alignment", [this](Call& call) { call.ReturnWhole(mAlignment); },
        [this](Call& call) {
            mAlignment = call.Whole(0);
            Changed();
        });
    AddVariable(
        L"UseMnemonic", [this](Call& call) { call.ReturnTruth(mUseMnemonic); },
        [this](Call& call) {
            mUseMnemonic = call.Truth(0);
            Changed();
        });
    AddVariable(
        L"Font", [this](Call& call) { call.ReturnObject(mFont.Object()); },
        [this](Call& call) { mFont.Share(call.Object(0).Get()); });
    mFont.WhenChanged([this] {
        if (IsThere()) Changed();
    });
    AddColour(L"ForeColor", mForeColour);
    AddColour(L"BackColor", mBackColour);
    SetDefault(L"Caption");
}

void Label::AddColour(const wchar_t* name, LONG& colour) {
    AddVariable(
        name, [&colour](Call& call) { call.ReturnWhole(colour); },
        [this, &colour](Call& call) {
            colour = call.Whole(0);
            Changed();
        });
}

void Label::FocusByAccessKey() {
    if (const ComPtr<Form> form = OwnerForm()) form->Navigation().FocusAfter(*this);
}

void Label::OnResized() {
    Changed();
    PaintedControl::OnResized();
}

void Label::Paint(HDC context) {
    constexpr UINT kAlignments[] = {DT_LEFT, DT_RIGHT, DT_CENTER};
    RECT area = ClientArea();
    const HBRUSH brush = CreateSolidBrush(ToColour(mBackColour));
    FillRect(context, &area, brush);
    DeleteObject(brush);
    const HGDIOBJ before = SelectObject(context, mFont.Handle());
    SetTextColor(context, ToColour(mForeColour));
    SetBkMode(context, TRANSPARENT);
    DrawTextW(context, mCaption.c_str(), static_cast<int>(mCaption.size()), &area,
              DT_WORDBREAK | (mUseMnemonic ? 0 : DT_NOPREFIX) |
                  kAlignments[mAlignment >= 0 && mAlignment <= 2 ? mAlignment : 0]);
    SelectObject(context, before);
}

}  // namespace kwohost
