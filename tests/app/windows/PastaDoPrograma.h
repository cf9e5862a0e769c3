#pragma once

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "platform/Clock.h"

#include <QByteArray>

#include <filesystem>
#include <optional>
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

/// What the log's banners say.
inline constexpr const char* aberturaDoRegistro = "Início de Execução";
inline constexpr const char* fechamentoDoRegistro = "Término de Execução";

/// An application folder of its own, with the program's globals as they are before the start; both go with
/// the object. Time stands still meanwhile: at midnight the log would begin another file. A process that a
/// test starts to see how it ends works in the folder of the test.
class PastaDoPrograma {
public:
    PastaDoPrograma() {
        libera();
        if (qEnvironmentVariableIsEmpty(variavel)) {
            propria_.emplace();
            qputenv(variavel, QByteArray::fromStdString(propria_->text()));
        }
        caminho_ = qgetenv(variavel).toStdString();
        aplicacao::setPasta(caminho_);
    }
    ~PastaDoPrograma() {
        libera();
        if (propria_) {
            qunsetenv(variavel);
        }
    }
    PastaDoPrograma(const PastaDoPrograma&) = delete;
    PastaDoPrograma& operator=(const PastaDoPrograma&) = delete;

    const std::filesystem::path& caminho() const { return caminho_; }
    bool tem(const char* nome) const { return files::exists(caminho_ / nome); }
    std::string le(const char* nome) const { return files::readAll(caminho_ / nome); }
    void escreve(const char* nome, const std::string& texto) const {
        std::filesystem::create_directories((caminho_ / nome).parent_path());
        files::writeAll(caminho_ / nome, texto);
    }
    void catalogo(const CatalogoXml& catalogo) const {
        escreve("TORVA_TramadorValidador.xml", catalogo.xml());
    }
    /// Puts the shipped catalog, schemas and stylesheets into the folder.
    void catalogoDistribuido() const {
        std::filesystem::copy(TV_SOURCE_DIR "/data", caminho_,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
    }
    /// The text of the log, empty when there is none.
    std::string registro() const {
        for (const auto& arquivo : std::filesystem::directory_iterator(caminho_)) {
            if (arquivo.path().filename().string().starts_with("log")) {
                return files::readAll(arquivo.path());
            }
        }
        return {};
    }

private:
    static constexpr const char* variavel = "TV_PASTA_DO_TESTE";

    static void libera() {
        mdiMain::destroi();
        objTramadorValidador.reset();
        oLogger.reset();
    }

    clock::Frozen agora_{clock::at(2026, 3, 14, 10)};
    std::optional<TemporaryFolder> propria_;
    std::filesystem::path caminho_;
};

} // namespace tv::test
