#include "import/ImportTools.h"

#include <fstream>

namespace zolmara::test {

std::ostream& operator<<(std::ostream& out, const Message& message) {
    return out << message.Level << ": " << message.Text;
}

Message Refused(const std::string& sheet, const std::string& rule, const std::string& echo) {
    return {sheet, rule + "\n\r" + sheet + ", " + echo};
}

std::string ImportTest::Write(std::string_view bytes) {
    const auto path = folder.File("import.txt");
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

bool ImportTest::ImportBytes(std::string_view bytes) { return ImportAsciiFile(Write(bytes)); }

bool ImportTest::Import(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (auto line : lines) text += Replace(line, "|", "\t") + "\r\n";
    return ImportBytes(text);
}

std::vector<Message> ImportTest::Messages() {
    std::vector<Message> messages;
    auto rows = gDB.OpenRecordset("Select * From Error;");
    for (; !rows.Eof(); rows.MoveNext()) {
        EXPECT_EQ(StrOr(rows["Code"]), "");
        messages.push_back({StrOr(rows["Level"]), StrOr(rows["Message"])});
    }
    return messages;
}

std::vector<std::string> ImportTest::Staged() {
    std::vector<std::string> staged;
    auto rows = gDB.OpenRecordset("Select WorkSheet, Row, Col, Contents From ImportASCII;");
    for (; !rows.Eof(); rows.MoveNext())
        staged.push_back(StrOr(rows[0]) + "|" + Text(rows[1]) + "|" + Text(rows[2]) + "|" +
                         StrOr(rows[3], "Null"));
    return staged;
}

bool ImportTest::IsClean() {
    return Messages() == std::vector<Message>{{"", std::string(kClosing)}};
}

std::vector<std::string> ImportTest::RulesOf(std::string_view line) {
    ImportErrorFlag = false;
    Import({line});
    std::vector<std::string> rules;
    for (const auto& message : Messages())
        if (message.Text != kClosing)
            rules.push_back(message.Text.substr(0, message.Text.find("\n\r")));
    EXPECT_EQ(ImportErrorFlag, !rules.empty());
    return rules;
}

std::string ImportTest::RuleOf(std::string_view line) {
    const auto rules = RulesOf(line);
    EXPECT_LE(rules.size(), 1u);
    return rules.empty() ? "" : rules[0];
}

}  // namespace zolmara::test
