#pragma once
// HospitalSettings: the program settings as data: the row of SYS, the parameters that the settings screen keeps and the
// tax registration; what stands, what would change, and a save of all of it or nothing.

#include <array>
#include <source_location>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Date.h"
#include "reporting/ChangesDialog.h"

namespace kv {

class Session;

/// A pair of options on the screen: what is stored for each, and its caption.
struct SettingPair {
    struct Option {
        const char* stored;
        const char* caption;
    };
    Option first, second;
    /// Any other stored value counts as the first option; without it as the second.
    bool elseFirst = false;

    bool isFirst(std::string_view stored) const;
};

// the pairs of the screen
inline constexpr SettingPair kYearPair{{"CALENDAR", "Calendar"}, {"FISCAL", "Fiscal"}, true};
inline constexpr SettingPair kSequencePair{{"0", "custom"}, {"1", "system sequence"}};
inline constexpr SettingPair kPaperPair{{"0", "preprinted form"}, {"1", "plain paper"}};
inline constexpr SettingPair kVoucherKeyPair{{"0", "within its period"}, {"1", "one running series"}};
inline constexpr SettingPair kComparePair{{"0", "same month of last year"}, {"1", "last month"}};
inline constexpr SettingPair kDirectPair{{"0", "N/A - Use APV Always"}, {"1", "With Direct Disbursement"}};
inline constexpr SettingPair kNumberingPair{{"Y", "custom periodic"}, {"N", "system sequence"}};

struct Setting {
    enum class Store { Sys, Parameter, Registration };
    Store store;
    const char* key;                    ///< column, or code of the parameter
    const char* label;                  ///< for people
    const char* description = "";       ///< kept beside a parameter
    const SettingPair* pair = nullptr;  ///< of a switch
};

/// In the order in which a save sends them.
const std::vector<Setting>& hospitalSettings();
/// Place of a setting in the list; it must be there.
std::size_t settingAt(Setting::Store store, std::string_view key);
const Setting& settingOf(Setting::Store store, std::string_view key);

/// A line of the grid of account codes.
struct CodeSetting {
    Setting::Store store;
    const char* key;
    bool mayBeGroup = false;  ///< a GL group may stand in the place of an account
};
const std::vector<CodeSetting>& codeSettings();

/// A value for each setting, in the order of the list.
using SettingValues = std::vector<std::string>;
/// What the database holds now. An option that was never chosen reads as what it counts as.
SettingValues StoredSettings(Session& session, std::source_location at = std::source_location::current());
/// What differs, in the words of the screen.
std::vector<Change> ChangesOf(const SettingValues& before, const SettingValues& after);
/// Stores all settings and an audit row for each that differs, in one transaction, then refreshes the session's copies
/// of SYS.
void SaveSettings(Session& session, const SettingValues& values,
                  std::source_location at = std::source_location::current());

/// A tax number written with its dashes: 9 digits, or 12 to 14 with the branch. Empty when it is none.
std::string taxNumber(std::string_view typed);

/// A number as the mask or the form would print it, and what is wrong with it.
struct NumberSample {
    std::string text;
    std::string warning;  ///< it may be saved nevertheless
    bool tooLong = false;
};
NumberSample maskSample(std::string_view mask, bool fourDigits, const Date& day);
NumberSample formSample(std::string_view prefix, std::string_view form, const Date& day);

}  // namespace kv
