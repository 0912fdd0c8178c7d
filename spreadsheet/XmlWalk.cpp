#include "spreadsheet/XmlWalk.h"

#include <fmt/format.h>

#include <orcus/sax_parser.hpp>
#include <vector>

#include "spreadsheet/SheetReaders.h"

namespace zolmara {

namespace {

constexpr std::size_t kMaxDepth = 1000;

/// Between the parser and a handler: attributes come ahead of their element, and the parser does
/// not hold the names of ends against those of beginnings.
class Walk : public orcus::sax_handler {
public:
    explicit Walk(XmlHandler& handler) : handler_(handler) {}

    void attribute(const orcus::sax::parser_attribute& attribute) {
        if (attribute.ns == "xmlns" || attribute.name == "xmlns") return;
        next_.Attributes.insert_or_assign(std::string(attribute.name),
                                          std::string(attribute.value));
    }
    void start_declaration(std::string_view) { next_.Attributes.clear(); }
    void end_declaration(std::string_view) { next_.Attributes.clear(); }
    void start_element(const orcus::sax::parser_element& element) {
        if (open_.size() >= kMaxDepth) throw UnreadableSheets("its elements lie too deep");
        open_.emplace_back(element.ns, element.name);
        next_.Name = element.name;
        handler_.Begin(next_);
        next_.Attributes.clear();
    }
    void end_element(const orcus::sax::parser_element& element) {
        if (open_.empty() || open_.back() != Name(element.ns, element.name))
            throw std::runtime_error("an element ends that did not begin");
        open_.pop_back();
        handler_.End(element.name);
        ended_ = open_.empty();
    }
    void characters(std::string_view text, bool) { handler_.Text(text); }

    bool Ended() const { return ended_; }

private:
    using Name = std::pair<std::string_view, std::string_view>;
    XmlHandler& handler_;
    XmlElement next_;
    std::vector<Name> open_;
    bool ended_ = false;
};

}  // namespace

void WalkXml(const std::string& xml, const std::string& part, XmlHandler& handler) {
    Walk walk(handler);
    try {
        orcus::sax_parser<Walk>(xml.data(), xml.size(), walk).parse();
    } catch (const UnreadableSheets&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw UnreadableSheets(fmt::format("its part {} is broken: {}", part, error.what()));
    }
    if (!walk.Ended()) throw UnreadableSheets(fmt::format("its part {} ends too early", part));
}

}  // namespace zolmara
