#include "Relatorio.h"
#include "Saida.h"

#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/XmlTransform.h"
#include "platform/text.h"
#include "validation/documentoResultado.h"

#include <optional>
#include <set>
#include <utility>

namespace boletos {

namespace {

/// Number of a report that cannot be made.
constexpr std::int32_t naoGerado = -2147221504;

// The name stands in a CDATA section, which nothing in it may end.
std::string documentoDe(const ArquivoValidado& validado, const tv::clsBoleto& layout) {
    const std::string nome = tv::text::replaceAll(nomeVisivel(validado.arquivo), "]]>", "]] >");
    return tv::montaDocumentoResultado(*validado.resultados, layout.getTitulo(), nome);
}

// One report a file: on standard output one after the other, in the file that --saida names when there is
// only one, otherwise in the folder that it names.
class UmPorArquivo : public Relatorio {
public:
    UmPorArquivo(const Contexto& contexto, const std::string& extensao)
        : layout_(contexto.layout) {
        const std::filesystem::path& saida = contexto.saida;
        const bool emPasta = !saida.empty() && (contexto.arquivos.size() > 1 || !saida.has_filename() ||
                                                std::filesystem::is_directory(saida));
        if (emPasta) {
            criaPasta(saida);
            daNomes(contexto, extensao);
        } else {
            unica_.emplace(saida);
        }
    }

    void arquivo(const ArquivoValidado& validado) override {
        if (unica_) {
            unica_->escreve(conteudo(validado));
            unica_->descarrega();
            return;
        }
        try {
            Saida saida(nomes_.at(proximo_++));
            saida.escreve(conteudo(validado));
            saida.termina();
        } catch (const tv::Error& falha) {
            throw FalhaDoRelatorio(falha.number(), falha.source(), falha.description());
        }
    }

    void termina() override {
        if (unica_) {
            unica_->termina();
        }
    }

protected:
    /// Throws FalhaDoRelatorio when the report cannot be made.
    virtual std::string conteudo(const ArquivoValidado& validado) const = 0;
    const tv::clsBoleto& layout() const noexcept { return *layout_; }

private:
    static void criaPasta(const std::filesystem::path& pasta) {
        std::error_code erro;
        std::filesystem::create_directories(pasta, erro);
        if (!std::filesystem::is_directory(pasta)) {
            throw tv::Error(tv::errc::pathNotFound, "boletos",
                            "Não foi possível criar a pasta '" + tv::files::toText(pasta) + "'.");
        }
    }

    // Files of one name from different folders get a number.
    void daNomes(const Contexto& contexto, const std::string& extensao) {
        const Protegidos protegidos(contexto.arquivos);
        std::set<std::filesystem::path> usados;
        for (const std::filesystem::path& arquivo : contexto.arquivos) {
            std::filesystem::path nome = arquivo.stem();
            nome += extensao;
            for (int n = 2; !usados.insert(nome).second; ++n) {
                nome = arquivo.stem();
                nome += "_" + std::to_string(n) + extensao;
            }
            nomes_.push_back(contexto.saida / nome);
            protegidos.confere(nomes_.back());
        }
    }

    std::shared_ptr<const tv::clsBoleto> layout_;
    std::optional<Saida> unica_;
    std::vector<std::filesystem::path> nomes_; // of the reports in a folder
    std::size_t proximo_ = 0;
};

class Xml final : public UmPorArquivo {
public:
    explicit Xml(const Contexto& contexto)
        : UmPorArquivo(contexto, ".xml") {}

protected:
    std::string conteudo(const ArquivoValidado& validado) const override {
        return tv::text::toLatin1Markup(documentoDe(validado, layout())) + "\n";
    }
};

class Html final : public UmPorArquivo {
public:
    explicit Html(const Contexto& contexto)
        : UmPorArquivo(contexto, ".html") {
        std::string motivo;
        folha_ =
            tv::XmlTransform::load(tv::files::findNoCase(contexto.pasta, "\\XSD\\resultado.xsl"), motivo);
        if (!folha_) {
            throw tv::Error(tv::errc::fileNotFound, "boletos",
                            "A folha resultado.xsl não pôde ser lida: " + motivo);
        }
    }

protected:
    std::string conteudo(const ArquivoValidado& validado) const override {
        tv::XmlDocument documento;
        if (!documento.loadXML(documentoDe(validado, layout()))) {
            throw FalhaDoRelatorio(naoGerado, "boletos",
                                   "Não foi possível gerar arquivo de resultado: " + documento.parseError());
        }
        try {
            return folha_->apply(documento);
        } catch (const tv::Error& falha) {
            throw FalhaDoRelatorio(naoGerado, "boletos",
                                   "Não foi possível gerar arquivo de resultado: " + falha.description());
        }
    }

private:
    std::shared_ptr<const tv::XmlTransform> folha_;
};

} // namespace

std::unique_ptr<Relatorio> relatorioXml(const Contexto& contexto) {
    return std::make_unique<Xml>(contexto);
}

std::unique_ptr<Relatorio> relatorioHtml(const Contexto& contexto) {
    return std::make_unique<Html>(contexto);
}

} // namespace boletos
