// Which new line an editor offers behind the current one.

#include <fmt/format.h>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Session.h"
#include "structure/EditLines.h"
#include "structure/LineRules.h"

namespace zolmara {

namespace {

/// Line 14 of A-8 is no line that others follow.
constexpr int kA8SubscriptsOnly = 14;
/// The first line of G-1 that a free line can follow.
constexpr int kG1LastOfForm = 9;
/// The first officer behind the form's five, and the last whose move stays below 1000.
constexpr int kLastOfficerOfForm = 5;
constexpr int kLastOfficer = 998;

std::optional<Currency> CurrencyOrNone(const Variant& value) {
    return IsNumeric(value) ? std::optional(CurOr(value)) : std::nullopt;
}

std::optional<Currency> LastShown(const LineRules& rules) {
    return CurrencyOrNone(gDB.Scalar(
        fmt::format("SELECT Max({}) From {} Where {};", rules.Key, rules.Item, rules.Shown)));
}

std::string BlankNames(const LineRules& rules) {
    return fmt::format("From {0} WHERE Len(Trim([{1}]))=0 Or [{1}] Is Null;", rules.Item,
                       rules.NameField);
}

LineOffer Refusal(std::string title, std::string text) {
    LineOffer offer;
    offer.RefusalTitle = std::move(title);
    offer.RefusalText = std::move(text);
    return offer;
}

/// A new line waits until every row has its name.
std::optional<LineOffer> BlankNameRefusal(const LineRules& rules) {
    if (rules.NameField.empty()) return std::nullopt;
    auto count =
        gDB.Scalar(fmt::format("SELECT Count({}) AS Cnt {}", rules.Key, BlankNames(rules)));
    if (NumOr(count) == 0) return std::nullopt;
    auto offer = Refusal(fmt::format("Incomplete entry error, table {}", rules.Item),
                         std::string(rules.NamesBlank));
    offer.BlankLine =
        CurrencyOrNone(gDB.Scalar(fmt::format("SELECT Min({}) {}", rules.Key, BlankNames(rules))));
    return offer;
}

Currency HighestWhole(const LineRules& rules, Currency line) {
    auto sql =
        fmt::format("SELECT Max({0}) AS MaxOfLn From {1} HAVING Fix([{0}])=[{0}] And {0}{2};",
                    rules.Key, rules.Item, rules.MaxLimit);
    return CurOr(gDB.Scalar(sql), line);
}

bool MayAddWhole(const LineRules& rules, Currency line) {
    if (!line.IsWhole() || line == Currency::FromWhole(rules.LastWhole)) return false;
    if (rules.Item == "A8" && line == Currency::FromWhole(kA8SubscriptsOnly)) return false;
    return HighestWhole(rules, line) == line;
}

/// A group that has reached .99 has no room behind it either, however many lines it has.
bool MayAddSubscript(const LineRules& rules, Currency line) {
    if (rules.Item == "G1" && line == Currency::FromWhole(kG1LastOfForm)) return false;
    return GroupSize(rules.Item, rules.Key, line) < rules.GroupLimit &&
           !HasLine(rules.Item, rules.Key, LastOfGroup(line));
}

std::string Question(const LineRules& rules, Currency whole, Currency subscript) {
    constexpr std::string_view kLine = "Add description {}? No will add line {}.";
    constexpr std::string_view kCostCenter = "Add Cost Center {}? No will add Cost Center {}.";
    const bool costCenter = rules.Keeper == LineKeeper::CostCenters;
    return fmt::format(fmt::runtime(costCenter ? kCostCenter : kLine), NumberText(whole),
                       NumberText(subscript));
}

LineOffer OfferBehind(const LineRules& rules, Currency line) {
    LineOffer offer;
    const auto whole = GroupOf(line) + kWholeStep;
    // Line 50 of S-2 does not count as the highest whole line behind 49, and does not move.
    const bool isTaken =
        rules.Keeper == LineKeeper::Components && HasLine(rules.Item, rules.Key, whole);
    if (MayAddWhole(rules, line) && !isTaken) offer.Whole = whole;
    if (MayAddSubscript(rules, line)) offer.Subscript = line + kSubscriptStep;
    if (offer.Whole && offer.Subscript)
        offer.Question = Question(rules, *offer.Whole, *offer.Subscript);
    return offer;
}

LineOffer OfferG1(Currency current) {
    const auto line = std::max(current, Currency::FromWhole(kG1LastOfForm));
    auto offer = OfferBehind(*FindLineRules("G1", line), line);
    if (NumOr(gDB.Scalar("SELECT Count(LineNum) AS Cnt From G1 WHERE LineNum>=16 and "
                         "LineNum<21;")) == 0) {
        offer.First = Currency::FromWhole(kOtherExpenses);
        offer.FirstQuestion = "Do you wish to add other expenses, line 16?";
    }
    return offer;
}

/// Entries go behind the last one; behind 99 they are numbered by hundredths, ahead of the total.
LineOffer OfferEntry(const LineRules& rules) {
    const auto last = LastShown(rules).value_or(Currency());
    const auto total = Currency::FromWhole(rules.LastWhole + 1);
    LineOffer offer;
    if (last + kWholeStep < total)
        offer.Whole = last + kWholeStep;
    else if (last + kSubscriptStep < total)
        offer.Subscript = last + kSubscriptStep;
    return offer;
}

LineOffer OfferMailLine(const LineRules& rules, Currency line) {
    LineOffer offer;
    if (!HasLine(rules.Item, rules.Key, LastOfGroup(line))) offer.Subscript = line + kSubscriptStep;
    return offer;
}

LineOffer OfferOfficer(const LineRules& rules, Currency current) {
    LineOffer offer;
    if (LastShown(rules).value_or(Currency()) < Currency::FromWhole(kLastOfficer))
        offer.Whole =
            GroupOf(std::max(current, Currency::FromWhole(kLastOfficerOfForm))) + kWholeStep;
    return offer;
}

LineOffer OfferByKeeper(const LineRules& rules, Currency line) {
    switch (rules.Keeper) {
        case LineKeeper::Entries:
            return OfferEntry(rules);
        case LineKeeper::MailLines:
            return OfferMailLine(rules, line);
        case LineKeeper::Officers:
            return OfferOfficer(rules, line);
        default:
            return rules.Item == "G1" ? OfferG1(line) : OfferBehind(rules, line);
    }
}

LineOffer FirstLine() {
    LineOffer offer;
    offer.Whole = kWholeStep;
    return offer;
}

}  // namespace

bool HasFreeLines(std::string_view item) { return FindLineRules(item, {}) != nullptr; }

LineOffer OfferLine(std::string_view item, std::optional<Currency> current) {
    const auto* rules = FindLineRules(item, current.value_or(Currency()));
    if (rules == nullptr)
        return Refusal(std::string(kProductName),
                       fmt::format("Worksheet {} takes no lines of its own.", item));
    if (auto refusal = BlankNameRefusal(*rules)) return *refusal;
    const auto line = current ? current : LastShown(*rules);
    if (!line) return FirstLine();
    if (current && !IsShownLine(*rules, *line))
        return Refusal(
            std::string(kProductName),
            fmt::format("There is no line {} to add to on {}.", NumberText(*line), item));
    return OfferByKeeper(*rules, *line);
}

LineOffer OfferCostCenter(std::optional<Currency> current) {
    return OfferLine("CostCenters", current);
}

LineOffer OfferComponent(int part, std::optional<Currency> current) {
    return OfferLine(fmt::format("S2p{}", part), current);
}

std::optional<Currency> ChooseLine(const LineOffer& offer, std::optional<LineStep> wish) {
    if (offer.Refused()) {
        TheDialogs().MsgBox(offer.RefusalText, kCritical, offer.RefusalTitle);
        return std::nullopt;
    }
    const std::string title(kProductName);
    if (offer.First && wish != LineStep::Subscript &&
        TheDialogs().MsgBox(offer.FirstQuestion, kYesNo | kDefaultButton2, title) == kYes)
        return offer.First;
    if (wish) return *wish == LineStep::Whole ? offer.Whole : offer.Subscript;
    if (!offer.Whole || !offer.Subscript) return offer.Whole ? offer.Whole : offer.Subscript;
    const int answer = TheDialogs().MsgBox(offer.Question, kYesNoCancel, title);
    if (answer == kYes) return offer.Whole;
    return answer == kNo ? offer.Subscript : std::nullopt;
}

}  // namespace zolmara
