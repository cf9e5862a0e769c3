// Findings into the report's page. Their texts, one a line of the input, show as texts: they bring no markup
// of their own into the page.
#include "Scratch.h"
#include "Shipped.h"
#include "Target.h"

#include "platform/XmlDocument.h"
#include "platform/XmlTransform.h"
#include "platform/text.h"
#include "validation/BuscaNoRelatorio.h"
#include "validation/documentoResultado.h"
#include "validation/paginasRelatorio.h"

#include <vector>

namespace {

using Lines = std::vector<std::string>;

const tv::XmlTransform& pageStylesheet() {
    static std::string reason;
    static const auto loaded =
        tv::XmlTransform::load(std::filesystem::path(fuzz::data) / "XSD" / "resultado.xsl", reason);
    return *loaded;
}

/// Value, title, name, path, key and description of a finding. Key and description go into the document as
/// they are, so markup in them can spoil it. Title and description never are the same, which the page shows
/// once.
std::string documentOf(const Lines& lines) {
    tv::Resultados findings;
    for (std::size_t i = 0; i + 5 < lines.size() && findings.size() < 20; i += 6) {
        tv::clsResultado finding;
        finding.setTag(lines[i + 2], lines[i], lines[i + 3], lines[i + 4]);
        finding.setError(static_cast<std::int32_t>(i), "T " + lines[i + 1], "D " + lines[i + 5]);
        finding.setLocation(1, static_cast<std::int32_t>(i));
        finding.SetBoleto(fuzz::layoutOf(""));
        findings.push_back(std::move(finding));
    }
    return tv::montaDocumentoResultado(findings, "Layout", "documento.xml");
}

/// The page, or the empty text where the document cannot be read.
std::string pageOf(const Lines& lines) {
    tv::XmlDocument document;
    return document.loadXML(documentOf(lines)) ? pageStylesheet().apply(document) : std::string();
}

std::size_t tagsOf(std::string_view page) {
    return static_cast<std::size_t>(std::count(page.begin(), page.end(), '<'));
}

Lines withoutMarkup(Lines lines) {
    for (std::string& line : lines) {
        for (char& c : line) {
            c = std::string_view("<>&\"']").find(c) == std::string_view::npos ? c : 'x';
        }
    }
    return lines;
}

} // namespace

void readForeign(std::string_view bytes) {
    Lines lines;
    for (const std::string_view line : tv::text::split(bytes, '\n')) {
        lines.push_back(tv::text::sanitizeUtf8(line));
    }
    const std::string page = pageOf(lines);
    for (const std::string& part : tv::paginasRelatorio(page)) {
        static_cast<void>(tv::BuscaNoRelatorio(part).lugares(lines.empty() ? "" : lines.front()));
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i % 6 >= 4) {
            lines[i] = withoutMarkup({lines[i]}).front();
        }
    }
    const std::string plain = pageOf(withoutMarkup(lines));
    const std::string marked = pageOf(lines);
    require(marked.empty() == plain.empty() && tagsOf(marked) == tagsOf(plain),
            "values bring no markup into a page");
}
