#pragma once

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"

#include <filesystem>
#include <string>

namespace tv::test {

/// A catalog of which a test names the parts that it is about.
struct CatalogoXml {
    std::string titulo = "Boletos de Teste";
    std::string versao = "2.1";
    std::string nivel = "ALL";
    std::string boletos{};

    std::string xml() const {
        return "<?xml version='1.0' encoding='UTF-8'?>\n<TORVA><app><titulo>" + titulo + "</titulo><versao>" +
               versao +
               "</versao><site><caption>Página</caption><link>https://localhost/</link></site>"
               "<email><caption>Contato</caption><link>a@localhost</link></email>"
               "<descricao>Um catálogo</descricao></app><logger type='TXT' level='" +
               nivel + "'/><configuracao><TABELAS/></configuracao>" + boletos + "</TORVA>";
    }
};

/// A layout with one section and one field.
inline std::string layout(const std::string& tag, const std::string& nome, bool comTramador,
                          bool comValidador) {
    return BoletoXml{.tag = tag,
                     .inside = SecaoXml{.inside = CampoXml{}.xml()}.xml(),
                     .nome = nome,
                     .versao = "3.0",
                     .validador = comValidador ? "\\XSD\\teste.xsd" : "",
                     .tramador = comTramador ? "SIM" : "NAO"}
        .xml();
}

/// An application folder of its own, with the program's globals as they are before the start; both go with
/// the object.
class PastaDoPrograma {
public:
    PastaDoPrograma() {
        libera();
        aplicacao::setPasta(pasta_.path());
    }
    ~PastaDoPrograma() { libera(); }
    PastaDoPrograma(const PastaDoPrograma&) = delete;
    PastaDoPrograma& operator=(const PastaDoPrograma&) = delete;

    const TemporaryFolder& pasta() const { return pasta_; }
    void catalogo(const CatalogoXml& catalogo) const {
        pasta_.write("TORVA_TramadorValidador.xml", catalogo.xml());
    }
    /// Puts the shipped catalog, schemas and stylesheets into the folder.
    void catalogoDistribuido() const {
        std::filesystem::copy(TV_SOURCE_DIR "/data", pasta_.path(), std::filesystem::copy_options::recursive);
    }
    /// The text of the log, empty when there is none.
    std::string registro() const {
        for (const auto& arquivo : std::filesystem::directory_iterator(pasta_.path())) {
            if (arquivo.path().filename().string().starts_with("log")) {
                return files::readAll(arquivo.path());
            }
        }
        return {};
    }

private:
    static void libera() {
        mdiMain::destroi();
        objTramadorValidador.reset();
        oLogger.reset();
    }

    TemporaryFolder pasta_;
};

} // namespace tv::test
