#pragma once

// XML as a walk over its elements. Entities beyond the five of XML itself are none, and nothing
// outside the text is ever read.

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace zolmara {

/// An element as it begins; names are given without their prefixes.
struct XmlElement {
    std::string_view Name;
    std::map<std::string, std::string, std::less<>> Attributes;

    std::string Attribute(std::string_view name) const {
        const auto found = Attributes.find(name);
        return found == Attributes.end() ? std::string() : found->second;
    }
};

struct XmlHandler {
    virtual ~XmlHandler() = default;
    virtual void Begin(const XmlElement& element) = 0;
    virtual void End(std::string_view name) { (void)name; }
    virtual void Text(std::string_view text) { (void)text; }
};

/// UnreadableSheets, naming the part, where the XML is broken or ends too early.
void WalkXml(const std::string& xml, const std::string& part, XmlHandler& handler);

}  // namespace zolmara
