#include <array>

#include "controls/month_view_fixture.h"

namespace kwo::controls {
namespace {

/// What a calendar has to look like, told by the rules and by nothing else.
struct Picture {
    int year = 2026;
    unsigned month = 11;
    unsigned focusDay = 21;
    std::vector<unsigned> selected;
    int firstDayOfWeek = 6;  // Sunday
    std::array<std::string, 7> dayLetters = {"M", "T", "W", "T", "F", "S", "S"};
    std::string caption = "November, 2026";
    int width = 133;
    int height = 200;
    std::string captionEdge = "9 0x480f";
    std::string headerEdge = "6 0x80f";
    std::string dayEdge = "6 0x80f";
    std::string selectedEdge = "10 0x80f";
    std::string colours[4] = {"-2147483630", "-2147483631", "-2147483640", "-2147483634"};
    bool bold[4] = {false, false, false, false};
    bool highlight = true;
    int context = 77;

    Lines Drawn() const;
};

std::string Area(int left, int top, int right, int bottom) {
    return '(' + std::to_string(left) + ',' + std::to_string(top) + ',' + std::to_string(right) + ',' +
           std::to_string(bottom) + ')';
}

Lines Picture::Drawn() const {
    Lines lines;
    const std::string dc = std::to_string(context) + ' ';
    const auto text = [&](const std::string& what, const std::string& area) {
        lines.push_back("DrawText " + dc + '"' + what + "\" " + area + " 0x8025");
    };
    const auto style = [&](int which) {
        lines.push_back("Let box.ForeColor " + colours[which]);
        lines.push_back(std::string("Let font.Bold ") + (bold[which] ? "True" : "False"));
    };
    const int cellWidth = (width - 8) / 7;
    const int cellHeight = (height - 8 - 23 - 4) / 7;
    std::vector<int> edges = {4};
    for (int column = 0; column < 7; ++column)
        edges.push_back(edges.back() + cellWidth + (column < (width - 8) - 7 * cellWidth ? 1 : 0));

    const std::string caption4 = Area(24, 5, width - 4 - 19 - 1, 23);
    lines.push_back("DrawEdge " + dc + caption4 + ' ' + captionEdge);
    style(0);
    text(caption, caption4);
    style(1);
    for (int column = 0; column < 7; ++column) {
        const auto at = static_cast<std::size_t>(column);
        const std::string cell = Area(edges[at], 27, edges[at + 1], 27 + cellHeight);
        lines.push_back("DrawEdge " + dc + cell + ' ' + headerEdge);
        text(dayLetters[static_cast<std::size_t>((column + firstDayOfWeek) % 7)], cell);
    }
    const auto first = platform::simulated::MomentOf({*platform::simulated::DayNumber(year, month, 1)});
    const double next = *platform::simulated::DayNumber(month == 12 ? year + 1 : year, month % 12 + 1, 1);
    const int days = static_cast<int>(next - *platform::simulated::DayNumber(year, month, 1));
    // Monday is 0 in the settings, Sunday is 0 in the calendar.
    const int firstColumn = (static_cast<int>(first.weekday) + 6 - firstDayOfWeek + 7) % 7;
    int day = 0;
    for (int row = 0; row < 6; ++row) {
        for (int column = 0; column < 7; ++column) {
            const auto at = static_cast<std::size_t>(column);
            const int top = 27 + cellHeight + 4 + row * cellHeight;
            const int left = edges[at], right = edges[at + 1], bottom = top + cellHeight;
            lines.push_back("DrawEdge " + dc + Area(left, top, right, bottom) + ' ' + dayEdge);
            if (row == 0 && column < firstColumn) continue;
            if (++day > days) continue;
            const bool isSelected = std::count(selected.begin(), selected.end(), static_cast<unsigned>(day)) != 0;
            if (isSelected && highlight) {
                const std::string corners = std::to_string((left + 2) * 15) + ',' + std::to_string((top + 2) * 15) +
                                            ',' + std::to_string((right - 4) * 15) + ',' +
                                            std::to_string((bottom - 4) * 15);
                lines.push_back("Call box.Line 38," + corners + ",-2147483635");
            } else if (isSelected) {
                lines.push_back("DrawEdge " + dc + Area(left, top, right, bottom) + ' ' + selectedEdge);
            }
            style(isSelected ? 3 : 2);
            text(std::to_string(day), Area(left, top, right, bottom));
            if (day == static_cast<int>(focusDay)) {
                lines.push_back("DrawFocusRect " + dc + Area(left + 2, top + 2, right - 2, bottom - 2));
            }
        }
    }
    lines.push_back("Call box.Refresh");
    return lines;
}

class MonthDrawingTest : public MonthViewTest {
protected:
    /// What a redraw draws.
    Lines Redrawn() {
        desktop.log.Clear();
        view->SelDaysAdd(view->SelDay());  // a day that is selected already redraws
        return TakeLog();
    }
    void Show(Date focus) { ASSERT_TRUE(Create(focus, {.selDate = focus, .canMultiSelect = true})); }
};

std::string NameOf(unsigned month) {
    const char* const names[] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};
    return names[month - 1];
}

TEST_F(MonthDrawingTest, CreateLaysOutAndDraws) {
    Create(On(2026, 11, 21));
    Lines expected = {"Let box.AutoRedraw True",
                      "Let box.BackColor -2147483633",
                      "Let box.ForeColor -2147483640",
                      "Let box.FillStyle 0",
                      "Let box.FontTransparent True",
                      "Call box.TextHeight \"JjGg|\"",
                      "DrawFrameControl 77 (4,4,23,23) 3 0x2",
                      "DrawFrameControl 77 (110,4,129,23) 3 0x3"};
    const Lines calendar = Picture().Drawn();
    expected.insert(expected.end(), calendar.begin(), calendar.end());
    EXPECT_EQ(TakeLog(), expected);
}

TEST_F(MonthDrawingTest, MonthsOfEveryLengthOnEveryWeekdayForEveryFirstDay) {
    int months = 0;
    for (int first = 0; first < 7; ++first) {
        desktop.locale.settings[4108] = Text(1, static_cast<char16_t>(u'0' + first));
        component::Component fresh(desktop.Services());
        KWOMonthView shown(fresh);
        for (int year = 2020; year <= 2027; ++year) {
            for (unsigned month = 1; month <= 12; ++month) {
                Date focus = On(year, month, 1 + month);
                desktop.log.Clear();
                ASSERT_TRUE(shown.Create(box, focus, {}));
                Picture picture;
                picture.year = year;
                picture.month = month;
                picture.focusDay = 1 + month;
                picture.firstDayOfWeek = first;
                picture.caption = NameOf(month) + ", " + std::to_string(year);
                const Lines drawn = TakeLog();
                ASSERT_EQ(Lines(drawn.begin() + 8, drawn.end()), picture.Drawn())
                    << year << '-' << month << ' ' << first;
                ++months;
            }
        }
    }
    EXPECT_EQ(months, 7 * 96);
}

TEST_F(MonthDrawingTest, BoxesOfAllSizes) {
    for (const int width : {0, 1, 50, 63, 64, 133, 134, 135, 640, 4000}) {
        for (const int height : {0, 1, 35, 36, 100, 200, 4000}) {
            box->SetProperty(u"Width", static_cast<float>(width * 15));
            box->SetProperty(u"Height", static_cast<float>(height * 15));
            Show(On(2026, 11, 21));
            Picture picture;
            picture.width = width;
            picture.height = height;
            picture.selected = {21};
            ASSERT_EQ(Redrawn(), picture.Drawn()) << width << " x " << height;
        }
    }
}

TEST_F(MonthDrawingTest, TheDayLettersAreTheUsers) {
    const char16_t* const names[] = {u"Mo", u"Di", u"Mi", u"Do", u"Fr", u"Sa", u"So"};
    for (std::uint32_t day = 0; day < 7; ++day)
        desktop.locale.settings[49 + day] = names[day];
    desktop.locale.settings[4108] = u"0";
    Show(On(2026, 11, 21));
    Picture picture;
    picture.selected = {21};
    picture.firstDayOfWeek = 0;
    picture.dayLetters = {"M", "D", "M", "D", "F", "S", "S"};
    EXPECT_EQ(Redrawn(), picture.Drawn());
}

TEST_F(MonthDrawingTest, AWeekThatBeginsOnNoDayBeginsOnMonday) {
    desktop.locale.settings[4108] = u"7";
    Show(On(2026, 11, 21));
    Picture picture;
    picture.selected = {21};
    picture.firstDayOfWeek = 0;
    EXPECT_EQ(Redrawn(), picture.Drawn());
}

TEST_F(MonthDrawingTest, AllBevels) {
    Show(On(2026, 11, 21));
    view->SetSelDayFontColor(0x0000FF);
    const struct {
        std::int16_t number;
        const char* edge;
        const char* selected;
        std::int16_t read;
    } rows[] = {{1, "5 0x180f", "10 0x480f", 1}, {2, "10 0x180f", "10 0x80f", 2}, {3, "6 0x80f", "10 0x80f", 3},
                {0, "9 0x480f", "10 0x80f", 0},  {7, "9 0x480f", "10 0x80f", 0},  {-1, "9 0x480f", "10 0x80f", 0}};
    for (const auto& row : rows) {
        Picture picture;
        picture.selected = {21};
        picture.highlight = false;
        picture.colours[3] = "255";
        view->SetCaptionBevel(row.number);
        picture.captionEdge = row.edge;
        EXPECT_EQ(view->CaptionBevel(), row.read);
        picture.headerEdge = "6 0x80f";
        EXPECT_EQ(Redrawn(), picture.Drawn()) << row.number;
        view->SetDayHdrBevel(row.number);
        EXPECT_EQ(view->DayHdrBevel(), row.read);
        picture.headerEdge = row.edge;
        EXPECT_EQ(Redrawn(), picture.Drawn()) << row.number;
        view->SetDayBevel(row.number);
        EXPECT_EQ(view->DayBevel(), row.read);
        picture.dayEdge = row.edge;
        picture.selectedEdge = row.selected;
        EXPECT_EQ(Redrawn(), picture.Drawn()) << row.number;
        view->SetDayHdrBevel(3);
        view->SetDayBevel(3);
    }
}

TEST_F(MonthDrawingTest, ABevelRedrawsAsAResizeDoes) {
    Show(On(2026, 11, 21));
    desktop.log.Clear();
    view->SetDayBevel(3);
    const Lines changed = TakeLog();
    view->Resize();
    EXPECT_EQ(changed, TakeLog());
    EXPECT_EQ(changed.front(), "Call box.Cls");
}

using HighlightIntended = MonthDrawingTest;

TEST_F(HighlightIntended, SelectedDaysHaveABoxNearerToTheTopLeft) {
    Show(On(2026, 11, 1));
    for (const unsigned day : {5u, 28u, 30u})
        view->SelDaysAdd(On(2026, 11, day));
    // Days of other months are not shown.
    view->SelDaysAdd(On(2026, 12, 6));
    Picture picture;
    picture.focusDay = 1;
    picture.selected = {1, 5, 28, 30};
    EXPECT_EQ(Redrawn(), picture.Drawn());
}

TEST_F(MonthDrawingTest, AnotherSelectedColourGivesASunkenEdge) {
    Show(On(2026, 11, 1));
    view->SetSelDayFontColor(0x8000000F);
    Picture picture;
    picture.focusDay = 1;
    picture.selected = {1};
    picture.highlight = false;
    picture.colours[3] = "-2147483633";
    EXPECT_EQ(Redrawn(), picture.Drawn());
}

TEST_F(MonthDrawingTest, ColoursAndWeightsAreThoseOfTheirTexts) {
    Show(On(2026, 11, 1));
    view->SetCaptionFontColor(1);
    view->SetDayHdrFontColor(2);
    view->SetDayFontColor(3);
    view->SetSelDayFontColor(4);
    for (int which = 0; which < 4; ++which) {
        view->SetCaptionFontBold(which == 0);
        view->SetDayHdrFontBold(which == 1);
        view->SetDayFontBold(which == 2);
        view->SetSelDayFontBold(which == 3);
        Picture picture;
        picture.focusDay = 1;
        picture.selected = {1};
        picture.highlight = false;
        for (int at = 0; at < 4; ++at) {
            picture.colours[at] = std::to_string(at + 1);
            picture.bold[at] = at == which;
        }
        EXPECT_EQ(Redrawn(), picture.Drawn()) << which;
    }
}

TEST_F(MonthDrawingTest, TheContextIsReadBeforeEveryDrawingCall) {
    Show(On(2026, 11, 21));
    box->logsReads = true;
    const Lines lines = Redrawn();
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (lines[at].starts_with("Draw")) {
            EXPECT_EQ(lines[at - 1], "Get box.hDC") << at;
        }
    }
}

TEST_F(MonthDrawingTest, APlainCalendarShowsNoDayAsSelected) {
    const platform::Platform services = desktop.Services();
    const TwipsPerPixel twips;
    PictureBox plainBox(services);
    plainBox.Assign(box);
    const MonthDrawing drawing(plainBox, services, component.locale, twips);
    MonthStyle style;
    style.captionBevel = Bevel::Of(0);
    style.headerBevel = style.dayBevel = Bevel::Of(3);
    style.captionColour = MonthStyle::kButtonText;
    style.headerColour = MonthStyle::kGreyText;
    style.dayColour = MonthStyle::kWindowText;
    style.selectedColour = MonthStyle::kHighlightText;
    MonthModel model;
    model.SetFocus(On(2026, 11, 21));
    for (unsigned day = 1; day < 8; ++day)
        model.Select(On(2026, 11, day));
    const MonthLayout layout = MonthLayout::Of(195, 2000, 3000, twips);
    Picture picture;
    EXPECT_TRUE(drawing.Calendar(layout, style, model, true));
    EXPECT_EQ(TakeLog(), picture.Drawn());
    picture.selected = {1, 2, 3, 4, 5, 6, 7};
    EXPECT_TRUE(drawing.Calendar(layout, style, model, false));
    EXPECT_EQ(TakeLog(), picture.Drawn());
}

TEST_F(MonthDrawingTest, TheFocusIsShownOnADayThatIsNotSelected) {
    Show(On(2026, 11, 21));
    view->SelDaysRemove(On(2026, 11, 21));
    view->SelDaysAdd(On(2026, 11, 3));
    Picture picture;
    picture.selected = {3};
    EXPECT_EQ(Redrawn(), picture.Drawn());
}

TEST_F(MonthDrawingTest, WhatTheHostRefusesEndsTheDrawing) {
    Show(On(2026, 11, 21));
    const Lines whole = Redrawn();
    const auto until = [&](std::string_view call, std::ptrdiff_t andMore) {
        const auto found = std::ranges::find_if(whole, [&](auto& line) { return line.starts_with(call); });
        return Lines(whole.begin(), found + andMore);
    };
    // The log has calls and assignments that fail, too.
    const struct {
        TextView member;
        Lines drawn;
    } rows[] = {{u"hDC", {}},
                {u"ForeColor", until("Let box.ForeColor", 1)},
                {u"Font", until("Let font.Bold", 0)},
                {u"Line", until("Call box.Line", 1)},
                {u"Refresh", until("Call box.Refresh", 1)}};
    for (const auto& row : rows) {
        box->FailMember(row.member, Refusal());
        EXPECT_EQ(Redrawn(), row.drawn) << std::string(row.member.begin(), row.member.end());
        box->MendMember(row.member);
    }
    EXPECT_EQ(Redrawn(), whole);
}

}  // namespace
}  // namespace kwo::controls
