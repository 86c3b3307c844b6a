#include "form_work.h"

#include <algorithm>

#include "com_test.h"
#include "findings.h"
#include "forms_host.h"
#include "script_folder.h"
#include "wscript_object.h"

namespace kwo::soak {
namespace {

using com_support::OwnedVariant;
using com_test::Var;

VARIANT Number(int value) {
    VARIANT number = {};
    number.vt = VT_I4;
    number.lVal = value;
    return number;
}

}  // namespace

FormWork::FormWork()
    : mHost(Script(L"forms.vbs")),
      mConnections([](const std::wstring&, const DISPPARAMS&, VARIANT*, EXCEPINFO*) { return S_OK; }) {
    mHost.AddGlobal(L"WScript", kwohost::MakeWScriptObject(mHost, mConnections, {}));
    kwohost::AddFormObjects(mHost);
    if (mHost.Run() != 0) Found("forms.vbs does not run");
}

FormWork::~FormWork() {
    mHost.Close();
}

OwnedVariant FormWork::Do(const wchar_t* procedure, std::vector<VARIANT> arguments) {
    std::reverse(arguments.begin(), arguments.end());
    const DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    OwnedVariant result;
    const HRESULT called = mHost.CallProcedure(procedure, parameters, &result, nullptr);
    if (FAILED(called)) Found("a procedure of forms.vbs fails: " + com_test::Narrow(procedure));
    return result;
}

void FormWork::Use(Random& random) {
    constexpr int kFewest = 3;
    constexpr int kActions = 6;
    Do(L"Open", {Number(random.Below(4)), Number(random.Below(12)), Number(random.Below(4))});
    for (int left = kFewest + random.Below(kActions); left > 0; --left) {
        switch (random.Below(9)) {
            case 0:
            case 1:
                Do(L"ClickCalendar", {Number(random.Below(100)), Number(random.Below(100))});
                break;
            case 2:
                Do(L"HoldArrow", {Number(random.Below(2)), Number(200 + random.Below(300))});
                break;
            case 3:
                Do(L"CalendarKeys", {Number(random.Below(6))});
                break;
            case 4:
                Do(L"ClickButton", {Number(random.Below(2)), Number(random.Below(100))});
                break;
            case 5:
                Do(L"HoldButton", {Number(random.Below(2)), Number(100 + random.Below(200))});
                break;
            case 6:
                Do(L"ButtonKeys", {Number(random.Below(4))});
                break;
            case 7:
                Do(L"DragBar", {Number(random.Below(3'000) - 1'500)});
                break;
            default:
                Do(L"ResizeForm", {Number(7'000 + random.Below(3'000)), Number(5'000 + random.Below(2'000))});
                break;
        }
    }
    Do(L"Shut");
}

long FormWork::Told(const wchar_t* what) {
    VARIANT name = {};
    name.vt = VT_BSTR;
    name.bstrVal = com_support::NewString(what);
    const OwnedVariant owner = OwnedVariant::Adopt(name);
    const OwnedVariant told = Do(L"Told", {name});
    return told.vt == VT_I4 ? told.lVal : told.vt == VT_I2 ? told.iVal : -1;
}

std::string FormWork::Totals() {
    std::string totals;
    for (const wchar_t* const what : {L"forms", L"months", L"dates", L"clicks", L"drags"})
        totals += (totals.empty() ? "" : ", ") + std::to_string(Told(what)) + " " + com_test::Narrow(what);
    return totals;
}

}  // namespace kwo::soak
