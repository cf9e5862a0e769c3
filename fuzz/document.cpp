// Documents in memory: loading, walking, writing. What is written loads again and is the same document.
#include "Scratch.h"
#include "Target.h"

#include "platform/Error.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

namespace {

void walk(const tv::XmlNode& node) {
    static_cast<void>(node.attributes());
    for (const tv::XmlNode& child : node.childNodes()) {
        require(tv::text::isUtf8(child.text()), "texts are UTF-8");
        if (child.isElement()) {
            walk(child);
        }
    }
}

void compare(const tv::XmlDocument& document, bool indent) {
    static const fuzz::Scratch folder;
    tv::XmlDocument again;
    require(again.load(folder.write("gravado.xml", document.toLatin1(indent))),
            "a document that was written loads");
    require(indent || again.xml() == document.xml(), "a document that was written is the same");
}

} // namespace

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    try {
        tv::XmlDocument text;
        static_cast<void>(text.loadXML(bytes));
        tv::XmlDocument document;
        if (!document.load(folder.write("documento.xml", bytes))) {
            require(!document.parseError().empty(), "a document that does not load says why");
            return;
        }
        walk(document.documentElement());
        static_cast<void>(document.selectNodes("//*[1]"));
        compare(document, false);
        compare(document, true);
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}
