#pragma once

#include "system_control.h"

namespace kwohost {

/// A field for text, of one line or more. Its default member is Text.
/// A change by the script raises Change as well as one by the user.
class TextBox final : public SystemControl {
public:
    TextBox(ScriptHost& host, Form& form, std::wstring name);

    /// Ctrl+Enter begins a new line also when Enter is for the default button.
    bool KeepsKey(WORD key, SHORT shift) const override;

protected:
    Shape WantedShape() const override;
    void OnMade() override;
    std::function<void()> KeepContent() const override;
    void OnUse(UINT notification) override;
    LRESULT Default(UINT message, WPARAM first, LPARAM second) override;

private:
    /// Text, MaxLength, Locked, PasswordChar.
    void AddTextMembers();
    /// MultiLine, ScrollBars, Alignment, BorderStyle.
    void AddShapeMembers();
    /// Cuts what is longer than MaxLength. Fires Change if the text is another one.
    void SetText(std::wstring text);
    void ApplyPasswordChar() const;

    /// 0 for no limit.
    LONG mMaxLength = 0;
    bool mIsLocked = false;
    /// Shown in place of every character; 0 shows the text.
    wchar_t mPasswordChar = 0;
    bool mIsMultiLine = false;
    /// 0 none, 1 horizontal, 2 vertical, 3 both; only with more lines.
    LONG mScrollBars = 0;
    /// 0 left, 1 right, 2 centre.
    LONG mAlignment = 0;
    /// 0 none, 1 a sunken edge.
    LONG mBorderStyle = 1;
};

}  // namespace kwohost
