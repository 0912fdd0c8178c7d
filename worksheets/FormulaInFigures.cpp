// A formula told with the figures in it.

#include <fmt/format.h>

#include <cmath>

#include "core/Globals.h"
#include "worksheets/Explain.h"

namespace zolmara {
namespace {

constexpr std::size_t kMostTerms = 6;

bool IsExactAt(double value, double scale) {
    return std::abs(std::round(value * scale) - value * scale) < 1e-7 * std::max(1.0, scale / 100);
}

/// A quotient ahead of its rounding: two decimals more than a ratio has.
std::string FineFigure(double value) {
    return IsExactAt(value, 1e6) ? Figure(value) : FormatNumber(value, "#,##0.00000000");
}

class Teller {
public:
    Teller(const CellRef& own, Evaluator& walker) : own_(own), walker_(walker) {}

    std::string Tell(const Node& node) {
        switch (node.Kind) {
            case NodeKind::Nothing:
                return {};
            case NodeKind::Sum:
            case NodeKind::Column:
            case NodeKind::Row:
            case NodeKind::Postings:
                return TellSum(node);
            case NodeKind::Less:
                return TellLess(node);
            case NodeKind::Product:
                return fmt::format("{} {} {} = {}", Number(node.Parts[0]), node.Text,
                                   Number(node.Parts[1]), Number(node));
            case NodeKind::Ratio:
                return fmt::format("{} / {} {} {}", Number(node.Parts[0]), Number(node.Parts[1]),
                                   IsZero(node.Parts[1]) ? "is taken as" : "=",
                                   FineFigure(walker_.Number(node, own_)));
            case NodeKind::Rounded:
                return TellRounded(node);
            case NodeKind::InText:
            case NodeKind::InMoney:
                return Tell(node.Parts[0]);
            case NodeKind::UnlessZero:
                return IsZero(node.Parts[0]) ? "there is no statistic" : Tell(node.Parts[1]);
            case NodeKind::KeptIfZero:
                return IsZero(node.Parts[0])
                           ? "kept from the last calculation, since the statistics add up to 0"
                           : Tell(node.Parts[1]);
            case NodeKind::Closed:
                return TellClosed(*node.Group);
            default:
                return Show(walker_.Value(node, own_));
        }
    }

private:
    static std::string Show(const Variant& value) {
        if (value.IsNull()) return "nothing";
        return value.IsNumber() ? Figure(value.Number()) : Text(value);
    }

    std::string Number(const Node& node) { return Figure(walker_.Number(node, own_)); }
    bool IsZero(const Node& node) { return walker_.Number(node, own_) == 0; }

    /// Terms of 0 say nothing.
    std::vector<double> TermsOf(const Node& node) {
        std::vector<double> terms;
        walker_.EachNumber(node, own_, [&](double term) {
            if (term != 0) terms.push_back(term);
        });
        return terms;
    }

    std::string TellSum(const Node& node) {
        std::vector<double> terms;
        const auto take = [&](const Node& part) {
            for (const double term : TermsOf(part)) terms.push_back(term);
        };
        if (node.Kind != NodeKind::Sum) take(node);
        for (const Node& part : node.Parts) take(part);
        if (terms.empty()) return "0";
        if (terms.size() == 1) return Figure(terms[0]);
        if (terms.size() > kMostTerms) {
            return fmt::format("the sum of {} amounts = {}",
                               Figure(static_cast<double>(terms.size())), Number(node));
        }
        std::string text = Figure(terms[0]);
        for (std::size_t i = 1; i < terms.size(); ++i) {
            text += (terms[i] < 0 ? " - " : " + ") + Figure(std::abs(terms[i]));
        }
        return text + " = " + Number(node);
    }

    std::string TellLess(const Node& node) {
        std::string text = Number(node.Parts[0]);
        for (std::size_t i = 1; i < node.Parts.size(); ++i) {
            const double part = walker_.Number(node.Parts[i], own_);
            text += (part < 0 ? " + " : " - ") + Figure(std::abs(part));
        }
        return text + " = " + Number(node);
    }

    std::string TellRounded(const Node& node) {
        const double plain = walker_.Number(node.Parts[0], own_);
        const double rounded = walker_.Number(node, own_);
        std::string text = Tell(node.Parts[0]);
        if (plain != rounded) text += ", rounded " + Figure(rounded);
        return text;
    }

    std::string TellClosed(const Closing& closing) {
        std::string text = Tell(closing.Share);
        const ClosedShares& shares = walker_.Shares(closing, own_);
        if (!shares.Moves || shares.Line != own_.Line || shares.Item != own_.Item) return text;
        const double moved = ThroughText(shares.Want - shares.Got);
        return text + fmt::format("; {} {} {}, since {}", Figure(std::abs(moved)),
                                  moved < 0 ? "taken off" : "added", closing.Closes,
                                  WhyThisLine(closing, shares));
    }

    std::string WhyThisLine(const Closing& closing, const ClosedShares& shares) const {
        const std::string line = NumberText(own_.Line);
        if (shares.AllZero) return fmt::format("all of them are 0 and line {} is the first", line);
        return fmt::format("line {} has {}", line, closing.Because);
    }

    const CellRef& own_;
    Evaluator& walker_;
};

}  // namespace

std::string Figure(double value) {
    if (IsExactAt(value, 1)) return FormatNumber(value, "#,##0");
    if (IsExactAt(value, 100)) return FormatNumber(value, "#,##0.00");
    std::string text = FormatNumber(value, "#,##0.000000");
    while (text.ends_with('0')) text.pop_back();
    return text;
}

std::string FormulaInFigures(const Node& formula, const CellRef& own, Evaluator& walker) {
    return Teller(own, walker).Tell(formula);
}

}  // namespace zolmara
