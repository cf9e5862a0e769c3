// A schema, and a document that is checked against it.
#include "Scratch.h"
#include "Shipped.h"
#include "Target.h"

#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/SchemaCache.h"
#include "platform/XmlReader.h"

namespace {

class Silent final : public tv::XmlHandler {
public:
    void documentLocator(const tv::XmlLocator& /*locator*/) override {}
    void startDocument() override {}
    void startElement(std::string_view /*localName*/) override {}
    void characters(std::string_view /*text*/) override {}
    void endElement(std::string_view /*localName*/) override {}
    void endDocument() override { ++ends; }
    void error(const tv::XmlFault& /*fault*/) override {}
    void fatalError(const tv::XmlFault& /*fault*/) override { ++ends; }
    void ignorableWarning(const tv::XmlFault& /*fault*/) override {}

    int ends = 0;
};

std::filesystem::path sample() {
    return std::filesystem::path(fuzz::data) / "amostras" / "arquivoposicao_4_01" / "valido_pequeno.xml";
}

} // namespace

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    static const std::filesystem::path types = folder.write(
        "tipos.xsd", tv::files::readAll(std::filesystem::path(fuzz::data) / "XSD" / "tipos.xsd"));
    const std::filesystem::path file = folder.write("esquema.xsd", bytes);
    tv::SchemaCache::clear();
    try {
        tv::XmlReader reader(tv::SchemaCache::get(file));
        Silent handler;
        reader.parse(sample(), handler);
        require(handler.ends == 1, "a parse ends in exactly one way");
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}
