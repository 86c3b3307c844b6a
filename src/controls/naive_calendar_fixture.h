#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/simulated/calendar.h"

namespace kwo::controls {

/// The rules of focus, limits and selection, taken literally.
struct NaiveCalendar {
    double focus = 0;
    double minStart = 0;
    double maxEnd = 0;
    bool multi = false;
    bool refuses = false;
    std::vector<long> selected;

    static platform::simulated::Moment At(double days) { return platform::simulated::MomentOf({days}); }
    static double Serial(int year, int month, int day) {
        while (month > 12)
            month -= 12, ++year;
        while (month < 1)
            month += 12, --year;
        return *platform::simulated::DayNumber(year, static_cast<unsigned>(month), 1) + day - 1;
    }
    static double First(double days) { return Serial(At(days).year, static_cast<int>(At(days).month), 1); }
    static double Last(double days) { return Serial(At(days).year, static_cast<int>(At(days).month) + 1, 0); }

    bool Has(double days) const { return std::count(selected.begin(), selected.end(), std::lrint(days)) != 0; }
    void Add(double days) {
        if (!Has(days)) selected.push_back(std::lrint(days));
    }
    void Remove(double days) { std::erase(selected, std::lrint(days)); }

    void Change(int offset, double target = 0) {
        if (target == 0) {
            const auto at = At(focus);
            const double first = Serial(at.year, static_cast<int>(at.month) + offset, 1);
            target = std::min(first + at.day - 1, Last(first));
        }
        if (minStart != 0 && target < minStart) return;
        if (maxEnd != 0 && target > maxEnd) return;
        if (refuses) return;
        focus = target;
    }
    void Arrow(int days) {
        const double target = focus + days;
        if (At(target).month != At(focus).month) {
            Change(0, target);
        } else if (target != 0) {
            focus = target;
        }
    }
    void Show(int year, int month) {
        const auto at = At(focus);
        if (month != static_cast<int>(at.month) || year != at.year) focus = Serial(year, month, 1);
        Change(0);
    }
    void SetMin(double days) {
        minStart = days <= 0 ? 0 : First(days);
        if (First(focus) < minStart) {
            focus = days;
            Change(0);
        }
    }
    void SetMax(double days) {
        maxEnd = days <= 0 ? 0 : Last(days);
        if (First(focus) + 31 > maxEnd) {
            focus = days;
            Change(0);
        }
    }
    void Toggle() {
        if (refuses) return;
        if (Has(focus)) return Remove(focus);
        if (!multi) selected.clear();
        Add(focus);
    }
    void Click(double day) {
        if (refuses) return;
        if (multi) {
            Has(day) ? Remove(day) : Add(day);
        } else {
            Remove(focus);
            Add(day);
        }
        focus = day;
    }
};

}  // namespace kwo::controls
