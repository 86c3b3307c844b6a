#include "raised_errors.h"

namespace kwohost {

namespace {

/// The failure of an engine that has told of the error.
constexpr HRESULT kToldAlready = static_cast<HRESULT>(0x80020101);

/// Whether a caller may see this code as the result of a call. It takes others for a call that never ran.
bool IsSafe(HRESULT code) {
    if (code == DISP_E_DIVBYZERO) return true;
    return FAILED(code) && HRESULT_FACILITY(code) != FACILITY_DISPATCH && code != E_NOTIMPL;
}

/// Whether an engine tells of an error that an object has passed on to it. Objects may add to the description.
bool IsSame(const ErrorReport& told, const ErrorReport& passed) {
    if (told.code == kToldAlready) return true;
    return told.code == passed.code &&
           (told.description.empty() || told.description.find(passed.description) != std::wstring::npos);
}

/// Leaves the error's texts on the thread, for whoever asks. Null if the system cannot.
ComPtr<IErrorInfo> LeaveMark(const ErrorReport& report) {
    ComPtr<ICreateErrorInfo> made;
    ComPtr<IErrorInfo> mark;
    if (FAILED(CreateErrorInfo(made.Out())) || FAILED(made->QueryInterface(IID_PPV_ARGS(mark.Out())))) return nullptr;
    made->SetSource(Bstr(report.source).Get());
    made->SetDescription(Bstr(report.description).Get());
    SetErrorInfo(0, mark.Get());
    return mark;
}

}  // namespace

void RaisedErrors::EndCall() noexcept {
    --mDepth;
    // The code that could have handled the error has ended.
    if (mPassed && mDepth < mPassed->below) Settle();
}

bool RaisedErrors::Keep(int below, ErrorReport report) {
    const bool isPassedOn = mPassed && IsSame(report, mPassed->report);
    // The place where it happened first says more than that of the call that passed it on.
    if (isPassedOn) {
        report = std::move(mPassed->report);
    } else {
        Settle();
    }
    mLast = report;
    mPassed = Passed{std::move(report), below, {}};
    if (below <= mLoopDepth) {
        ShowKept();
        return false;
    }
    mPassed->mark = LeaveMark(mPassed->report);
    return IsSafe(mPassed->report.code);
}

void RaisedErrors::Settle() noexcept {
    if (!mPassed) return;
    ComPtr<IErrorInfo> left;
    GetErrorInfo(0, left.Out());
    if (mPassed->mark && left.Get() == mPassed->mark.Get()) return ShowKept();
    if (left) SetErrorInfo(0, left.Get());
    mPassed.reset();
}

void RaisedErrors::ShowKept() noexcept {
    if (!mPassed) return;
    if (mPassed->mark) SetErrorInfo(0, nullptr);
    Show([this] { return mPassed->report; });
    mPassed.reset();
}

}  // namespace kwohost
