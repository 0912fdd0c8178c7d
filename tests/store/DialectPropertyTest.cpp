// Random expressions of the dialect, against a small evaluator of their meaning.

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Globals.h"
#include "store/Dao.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

struct Row {
    std::optional<double> Line;    // CURRENCY
    std::optional<double> Amount;  // DOUBLE
};

const std::vector<Row>& TheRows() {
    static const std::vector<Row> rows{
        {1, 10},  {4, {}}, {4.01, 4.02}, {4.03, 4.02 + .01},  {-2.5, -2.5}, {{}, 3},
        {{}, {}}, {0, 0},  {99, 0.1},    {12.34, 12.3400001}, {7, -0.5},    {0.0001, 2.5}};
    return rows;
}

enum class Op {
    Line,
    Amount,
    Literal,
    Null,  // leaves
    Add,
    Subtract,
    Multiply,
    Divide,  // two numbers
    Negate,
    Abs,
    Fix,
    Int,
    IIf,  // a number of numbers
    Less,
    LessEqual,
    Equal,
    NotEqual,
    Greater,
    GreaterEqual,
    In,
    Between,
    IsNull,
    IsNotNull,
    And,
    Or,
    Not
};

struct Node {
    Op What;
    std::vector<Node> Args = {};
    int Units = 0;  // a literal, in ten thousandths
    bool operator==(const Node&) const = default;
};

// --- Drawing

int Draw(int count) { return *rc::gen::resize(100, rc::gen::inRange(0, count)); }

Node DrawLiteral() {
    static const std::vector<int> units{0, 10000, 40000, 40300, 100, 12345, 25000, 123400, 990000};
    return {Op::Literal, {}, Draw(3) ? units[static_cast<std::size_t>(Draw(9))] : Draw(200000)};
}

Node DrawBool(int depth);

Node DrawNumber(int depth) {
    if (depth == 0 || Draw(4) == 0) {
        if (Draw(12) == 0) return {Op::Null};
        const int leaf = Draw(3);
        return leaf == 0 ? Node{Op::Line} : leaf == 1 ? Node{Op::Amount} : DrawLiteral();
    }
    const auto one = [&] { return DrawNumber(depth - 1); };
    switch (Draw(9)) {
        case 0:
            return {Op::Add, {one(), one()}};
        case 1:
            return {Op::Subtract, {one(), one()}};
        case 2:
            return {Op::Multiply, {one(), one()}};
        case 3:
            return {Op::Divide, {one(), {Op::Literal, {}, 10000 * (1 + Draw(9))}}};
        case 4:
            return {Op::Negate, {one()}};
        case 5:
            return {Op::Abs, {one()}};
        case 6:
            return {Op::Fix, {one()}};
        case 7:
            return {Op::Int, {one()}};
        default:
            return {Op::IIf, {DrawBool(depth - 1), one(), one()}};
    }
}

Node DrawBool(int depth) {
    const int below = depth > 0 ? depth - 1 : 0;
    const auto number = [&] { return DrawNumber(below); };
    const int kind = Draw(depth > 0 ? 13 : 10);
    if (kind < 6) return {static_cast<Op>(static_cast<int>(Op::Less) + kind), {number(), number()}};
    if (kind == 6) return {Op::In, {number(), number(), number(), DrawLiteral()}};
    if (kind == 7) return {Op::Between, {number(), number(), number()}};
    if (kind == 8) return {Op::IsNull, {number()}};
    if (kind == 9) return {Op::IsNotNull, {number()}};
    if (kind == 10) return {Op::Not, {DrawBool(below)}};
    return {kind == 11 ? Op::And : Op::Or, {DrawBool(below), DrawBool(below)}};
}

// --- Meaning. A truth is 1, 0 or nothing.

using Value = std::optional<double>;

bool IsWritten(const Node& node) { return node.What == Op::Literal || node.What == Op::Null; }

/// What comes out of a field of four decimals is compared at four decimals; so is a choice between
/// two such, or between such a one and a written value.
bool IsFixed(const Node& node) {
    switch (node.What) {
        case Op::Line:
            return true;
        case Op::Negate:
        case Op::Abs:
        case Op::Fix:
        case Op::Int:
            return IsFixed(node.Args[0]);
        case Op::IIf: {
            const auto &a = node.Args[1], &b = node.Args[2];
            return (IsFixed(a) && (IsFixed(b) || IsWritten(b))) || (IsWritten(a) && IsFixed(b));
        }
        default:
            return false;
    }
}

Value Evaluate(const Node& node, const Row& row);

Value Compare(Op op, const Node& left, const Node& right, const Row& row) {
    auto a = Evaluate(left, row);
    auto b = Evaluate(right, row);
    if (!a || !b) return {};
    if (IsFixed(left) || IsFixed(right)) {
        a = Currency(*a).ToDouble();
        b = Currency(*b).ToDouble();
    }
    switch (op) {
        case Op::Less:
            return *a < *b;
        case Op::LessEqual:
            return *a <= *b;
        case Op::Equal:
            return *a == *b;
        case Op::NotEqual:
            return *a != *b;
        case Op::Greater:
            return *a > *b;
        default:
            return *a >= *b;
    }
}

Value Not(Value truth) { return truth ? Value(*truth == 0) : Value(); }
Value And(Value a, Value b) {
    if ((a && *a == 0) || (b && *b == 0)) return 0;
    return a && b ? Value(1) : Value();
}
Value Or(Value a, Value b) { return Not(And(Not(a), Not(b))); }

Value EvaluateIn(const Node& node, const Row& row) {
    Value found = 0;
    for (std::size_t item = 1; item < node.Args.size(); ++item)
        found = Or(found, Compare(Op::Equal, node.Args[0], node.Args[item], row));
    return found;
}

Value EvaluateTruth(const Node& node, const Row& row) {
    const auto arg = [&](std::size_t at) { return Evaluate(node.Args[at], row); };
    switch (node.What) {
        case Op::In:
            return EvaluateIn(node, row);
        case Op::Between:
            return And(Compare(Op::GreaterEqual, node.Args[0], node.Args[1], row),
                       Compare(Op::LessEqual, node.Args[0], node.Args[2], row));
        case Op::IsNull:
            return !arg(0);
        case Op::IsNotNull:
            return arg(0).has_value();
        case Op::And:
            return And(arg(0), arg(1));
        case Op::Or:
            return Or(arg(0), arg(1));
        case Op::Not:
            return Not(arg(0));
        default:
            return Compare(node.What, node.Args[0], node.Args[1], row);
    }
}

Value EvaluateTwo(Op op, Value a, Value b) {
    if (!a || !b) return {};
    switch (op) {
        case Op::Add:
            return *a + *b;
        case Op::Subtract:
            return *a - *b;
        case Op::Multiply:
            return *a * *b;
        default:
            return *a / *b;
    }
}

Value EvaluateOne(Op op, Value a) {
    if (!a) return {};
    switch (op) {
        case Op::Negate:
            return -*a;
        case Op::Abs:
            return std::abs(*a);
        case Op::Fix:
            return std::trunc(*a);
        default:
            return std::floor(*a);
    }
}

Value Evaluate(const Node& node, const Row& row) {
    const auto arg = [&](std::size_t at) { return Evaluate(node.Args[at], row); };
    switch (node.What) {
        case Op::Line:
            return row.Line;
        case Op::Amount:
            return row.Amount;
        case Op::Literal:
            return node.Units / 10000.0;
        case Op::Null:
            return {};
        case Op::Add:
        case Op::Subtract:
        case Op::Multiply:
        case Op::Divide:
            return EvaluateTwo(node.What, arg(0), arg(1));
        case Op::Negate:
        case Op::Abs:
        case Op::Fix:
        case Op::Int:
            return EvaluateOne(node.What, arg(0));
        case Op::IIf:
            return arg(arg(0).value_or(0) != 0 ? 1 : 2);
        default:
            return EvaluateTruth(node, row);
    }
}

// --- Text, in a manner of writing that is drawn: case, blanks, brackets around names

struct Manner {
    bool Varied = false;

    std::string Word(const std::string& word) const {
        const int form = Varied ? Draw(3) : 0;
        return form == 0 ? word : form == 1 ? UCase(word) : LCase(word);
    }
    std::string Name(const std::string& name) const {
        return Varied && Draw(2) ? "[" + Word(name) + "]" : Word(name);
    }
    std::string Blank() const {
        return Varied ? std::string(static_cast<std::size_t>(Draw(3)), ' ') : "";
    }
    std::string Gap() const { return " " + Blank(); }

    std::string List(const Node& node, std::size_t from) const {
        std::string text;
        for (std::size_t at = from; at < node.Args.size(); ++at)
            text += (at > from ? "," + Blank() : "") + Write(node.Args[at]);
        return text;
    }
    std::string Call(const char* function, const Node& node) const {
        return Word(function) + "(" + Blank() + List(node, 0) + Blank() + ")";
    }
    std::string Joined(const Node& node, const std::string& op) const {
        return "(" + Write(node.Args[0]) + op + Write(node.Args[1]) + ")";
    }
    std::string Write(const Node& node) const {
        static const char* const kSigns[] = {"+", "-", "*", "/"};
        static const char* const kComparisons[] = {"<", "<=", "=", "<>", ">", ">="};
        const int op = static_cast<int>(node.What);
        switch (node.What) {
            case Op::Line:
                return Name("LineNum");
            case Op::Amount:
                return Name("Col_1");
            case Op::Literal:
                return WriteLiteral(node.Units);
            case Op::Null:
                return Word("Null");
            case Op::Add:
            case Op::Subtract:
            case Op::Multiply:
            case Op::Divide:
                return Joined(node,
                              Blank() + kSigns[op - static_cast<int>(Op::Add)] + " " + Blank());
            case Op::Negate:
                return "(- " + Blank() + Write(node.Args[0]) + ")";
            case Op::Abs:
                return Call("Abs", node);
            case Op::Fix:
                return Call("Fix", node);
            case Op::Int:
                return Call("Int", node);
            case Op::IIf:
                return Call("IIf", node);
            case Op::In:
                return "(" + Write(node.Args[0]) + Gap() + Word("In") + Blank() + "(" +
                       List(node, 1) + "))";
            case Op::Between:
                return "(" + Write(node.Args[0]) + Gap() + Word("Between") + Gap() +
                       Write(node.Args[1]) + Gap() + Word("And") + Gap() + Write(node.Args[2]) +
                       ")";
            case Op::IsNull:
                return Call("IsNull", node);
            case Op::IsNotNull:
                return "(" + Write(node.Args[0]) + Gap() + Word("Is") + Gap() + Word("Not") +
                       Gap() + Word("Null") + ")";
            case Op::And:
                return Joined(node, Gap() + Word("And") + Gap());
            case Op::Or:
                return Joined(node, Gap() + Word("Or") + Gap());
            case Op::Not:
                return "(" + Word("Not") + Gap() + Write(node.Args[0]) + ")";
            default:
                return Joined(node,
                              Blank() + kComparisons[op - static_cast<int>(Op::Less)] + Blank());
        }
    }
    static std::string WriteLiteral(int units) { return NumberText(units / 10000.0); }
};

class DialectProperty : public testing::Test {
protected:
    DialectProperty() : db_(DBEngine::CreateDatabase(folder_.File("Property.CRF"), "")) {
        db_.AppendTable({"T",
                         {{"SeqNum", FieldType::dbInteger},
                          {"LineNum", FieldType::dbCurrency},
                          {"Col_1", FieldType::dbDouble}},
                         {}});
        int number = 0;
        for (const auto& row : TheRows())
            db_.Execute("INSERT INTO T (SeqNum,LineNum,Col_1) VALUES (?,?,?);",
                        {++number, Of(row.Line), Of(row.Amount)});
        // A number in an argument goes through its text; this one is meant to the last bit.
        db_.Execute("UPDATE T SET Col_1=4.02+.01 WHERE SeqNum=4;");
    }
    static Variant Of(Value value) { return value ? Variant(*value) : Variant(); }

    std::string Selected(const std::string& condition) {
        std::string numbers;
        for (auto rows = db_.OpenRecordset("SELECT SeqNum FROM T WHERE " + condition + ";");
             !rows.Eof(); rows.MoveNext())
            numbers += StrOr(rows[0]) + " ";
        return numbers;
    }
    static std::string Expected(const Node& node) {
        std::string numbers;
        for (std::size_t row = 0; row < TheRows().size(); ++row)
            if (Evaluate(node, TheRows()[row]).value_or(0) != 0)
                numbers += std::to_string(row + 1) + " ";
        return numbers;
    }

    void ExpectRefused(const std::string& text) {
        EXPECT_THROW(db_.OpenRecordset(text), StoreError) << text.substr(0, 40);
    }

    TempFolder folder_;
    Database db_;
};

TEST_F(DialectProperty, ConditionsSelectTheRowsForWhichTheyHold) {
    EXPECT_TRUE(rc::check([this] {
        const auto node = DrawBool(3);
        const auto text = Manner{}.Write(node);
        RC_LOG() << text << "\n";
        RC_ASSERT(Selected(text) == Expected(node));
    }));
}

TEST_F(DialectProperty, ExpressionsHaveTheirValue) {
    EXPECT_TRUE(rc::check([this] {
        const auto node = DrawNumber(4);
        const auto text = Manner{}.Write(node);
        RC_LOG() << text << "\n";
        auto rows = db_.OpenRecordset("SELECT " + text + " AS V FROM T ORDER BY SeqNum;");
        for (const auto& row : TheRows()) {
            const auto value = Evaluate(node, row);
            RC_ASSERT(rows[0].IsNull() == !value);
            if (value)
                RC_ASSERT(std::abs(NumOr(rows[0]) - *value) <= 1e-9 * (1 + std::abs(*value)));
            rows.MoveNext();
        }
    }));
}

TEST_F(DialectProperty, BlanksCaseAndBracketsChangeNothing) {
    EXPECT_TRUE(rc::check([this] {
        const auto node = DrawBool(3);
        const auto text = Manner{true}.Write(node);
        RC_LOG() << text << "\n";
        RC_ASSERT(Selected(text) == Expected(node));
    }));
}

void DrawLiteralsAnew(Node& node) {
    if (node.What == Op::Literal) node = DrawLiteral();
    for (auto& arg : node.Args) DrawLiteralsAnew(arg);
    if (node.What == Op::Divide) node.Args[1].Units = 10000 * (1 + Draw(9));
}

TEST_F(DialectProperty, AStatementWithOtherValuesHasItsOwnResult) {
    EXPECT_TRUE(rc::check([this] {
        auto node = DrawBool(2);
        for (int round = 0; round < 3; ++round) {
            const auto text = Manner{}.Write(node);
            RC_LOG() << text << "\n";
            RC_ASSERT(Selected(text) == Expected(node));
            DrawLiteralsAnew(node);
        }
    }));
}

// Whatever a text is, it is run or refused.
TEST_F(DialectProperty, GarbageIsRefused) {
    static const std::vector<std::string> kPieces{
        "SELECT ", "* ",        "FROM ",    "T ",   "WHERE ",      "(",     ")",       ",",
        "[",       "]",         "\"",       "'",    "#",           "1",     "1e9",     ".",
        "=",       "<",         ">",        "And ", "Or ",         "Not ",  "In ",     "Null ",
        "IIf(",    "Sum(",      "UPDATE ",  "SET ", "Col_1",       "INTO ", "INSERT ", "VALUES ",
        "TOP ",    "ORDER BY ", "HAVING ",  "?",    ";",           "--",    "/*",      "\\",
        "\0x",     "é",         "Between ", "Is ",  "INNER JOIN ", "ON ",   "CREATE ", "INDEX ",
        "DROP ",   "TABLE ",    "x",        "-"};
    const auto run = [this](const std::string& text) {
        try {
            db_.Execute(text);
        } catch (const StoreError&) {
        }
        try {
            db_.OpenRecordset(text);
        } catch (const StoreError&) {
        }
        try {
            db_.OpenRecordset("T").FindFirst(text);
        } catch (const StoreError&) {
        }
    };
    EXPECT_TRUE(rc::check([&](const std::string& bytes) {
        run(bytes);
        std::string text;
        for (int pieces = Draw(25); pieces > 0; --pieces)
            text += kPieces[static_cast<std::size_t>(Draw(static_cast<int>(kPieces.size())))];
        RC_LOG() << text << "\n";
        run(text);
        if (!db_.HasTable("T")) RC_DISCARD("");
    }));
}

TEST_F(DialectProperty, LongTextsAreRunAndEndlessOnesRefused) {
    const auto repeated = [](const std::string& piece) {
        std::string text;
        for (int count = 0; count < 50000; ++count) text += piece;
        return text;
    };
    for (const auto* piece : {"+1", " And 1", " Or 1", "=1", " Is Null", " In(1)", "^1", "&1",
                              " Between 1 And 1", " Mod 1"})
        ExpectRefused("SELECT 1" + repeated(piece) + " AS V FROM T;");
    for (const auto* piece : {"(", "-", "Not ", "Abs(", "IIf(1,"})
        ExpectRefused("SELECT " + repeated(piece) + "1 FROM T;");
    ExpectRefused("SELECT * FROM " + repeated("(") + "T;");
    const auto rows = db_.OpenRecordset("SELECT \"" + repeated("xy") + "\" AS V FROM T;");
    EXPECT_EQ(StrOr(rows[0]).size(), 100000u);
    std::string sum = "SELECT 1";
    for (int term = 0; term < 80; ++term) sum += "+1";
    EXPECT_EQ(NumOr(db_.Scalar(sum + " AS V FROM T;")), 81);
}

}  // namespace
}  // namespace zolmara::test
