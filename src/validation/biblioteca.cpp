#include "validation/biblioteca.h"

#include "logging/Routine.h"
#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/XmlTransform.h"
#include "platform/text.h"

namespace tv::biblioteca {

namespace {

constexpr std::string_view nomeStream = "biblioteca.transformStream";
constexpr std::string_view nomeFile = "biblioteca.transformFile";

bool escreve(const XmlDocument& documento, const std::filesystem::path& xsl,
             const std::filesystem::path& destino) {
    std::string motivo;
    const auto folha = XmlTransform::load(xsl, motivo);
    if (!folha) {
        return false;
    }
    files::replaceWhole(destino, folha->apply(documento));
    return true;
}

} // namespace

bool transformStream(std::string_view xml, const std::filesystem::path& xsl,
                     const std::filesystem::path& destino) {
    return guarded(nomeStream, false, [&] {
        const std::string_view texto = text::trim(xml);
        XmlDocument documento;
        return !texto.empty() && documento.loadXML(texto) && escreve(documento, xsl, destino);
    });
}

bool transformFile(const std::filesystem::path& arquivo, const std::filesystem::path& xsl,
                   const std::filesystem::path& destino) {
    return guarded(nomeFile, false, [&] {
        XmlDocument documento;
        return !text::trim(files::toText(arquivo)).empty() && documento.load(arquivo) &&
               escreve(documento, xsl, destino);
    });
}

std::string transformStream(const std::filesystem::path& arquivo, const std::filesystem::path& xsl) {
    return guarded(nomeStream, std::string(), [&]() -> std::string {
        XmlDocument documento;
        std::string motivo;
        if (text::trim(files::toText(arquivo)).empty() || !documento.load(arquivo)) {
            return {};
        }
        const auto folha = XmlTransform::load(xsl, motivo);
        return folha ? folha->apply(documento) : std::string();
    });
}

} // namespace tv::biblioteca
