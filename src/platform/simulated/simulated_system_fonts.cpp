#include "platform/simulated/simulated_system_fonts.h"

#include <string>

namespace kwo::platform::simulated {

bool SimulatedSystemFonts::QueryNonClient(NonClientFonts& fonts) {
    const Call call(mWorld, "SystemParametersInfo");
    mWorld.log.Add("SystemParametersInfo 41");
    if (call.Fails()) return false;
    fonts = nonClient;
    return true;
}

HostObjectRef SimulatedSystemFonts::MakeFont() {
    const Call call(mWorld, "OleCreateFontIndirect");
    call.RaiseIfPlanned();
    auto font =
        std::make_shared<SimulatedObject>(mWorld.log, mWorld.faults, u"Font", "font" + std::to_string(made.size() + 1));
    font->SetProperty(u"Name", Text());
    font->SetProperty(u"Size", 0.0);
    for (const TextView name : {u"Bold", u"Italic", u"Underline", u"Strikethrough"})
        font->SetProperty(name, false);
    made.push_back(font);
    return font;
}

}  // namespace kwo::platform::simulated
