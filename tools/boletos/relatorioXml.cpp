#include "Relatorio.h"
#include "Saida.h"

#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/XmlTransform.h"
#include "platform/text.h"
#include "validation/documentoResultado.h"

#include <set>

namespace boletos {

namespace {

std::string documentoDe(const ArquivoValidado& validado, const tv::clsBoleto& layout) {
    return tv::montaDocumentoResultado(*validado.resultados, layout.getTitulo(),
                                       tv::text::sanitizeUtf8(tv::files::toText(validado.arquivo)));
}

// One report a file: on standard output one after the other, in the file that --saida names when there is
// only one, otherwise in the folder that it names.
class UmPorArquivo : public Relatorio {
public:
    UmPorArquivo(Contexto contexto, std::string extensao)
        : contexto_(std::move(contexto))
        , extensao_(std::move(extensao)) {
        const bool terminaEmPasta = !contexto_.saida.empty() && !contexto_.saida.has_filename();
        emPasta_ = !contexto_.saida.empty() && (contexto_.arquivos > 1 || terminaEmPasta ||
                                                std::filesystem::is_directory(contexto_.saida));
        if (emPasta_) {
            criaPasta();
        }
    }

    void arquivo(const ArquivoValidado& validado) override {
        Saida saida(emPasta_ ? nomeNaPasta(validado.arquivo) : contexto_.saida);
        saida.escreve(conteudo(validado));
        saida.termina();
    }
    void termina() override {}

protected:
    virtual std::string conteudo(const ArquivoValidado& validado) const = 0;
    const Contexto& contexto() const noexcept { return contexto_; }

private:
    void criaPasta() const {
        std::error_code erro;
        std::filesystem::create_directories(contexto_.saida, erro);
        if (!std::filesystem::is_directory(contexto_.saida)) {
            throw tv::Error(tv::errc::pathNotFound, "boletos",
                            "Não foi possível criar a pasta '" + tv::files::toText(contexto_.saida) + "'");
        }
    }

    // Files of one name from different folders get a number.
    std::filesystem::path nomeNaPasta(const std::filesystem::path& arquivo) {
        const std::string base = tv::files::toText(arquivo.stem());
        std::string nome = base + extensao_;
        for (int n = 2; !usados_.insert(nome).second; ++n) {
            nome = base + "_" + std::to_string(n) + extensao_;
        }
        return contexto_.saida / nome;
    }

    Contexto contexto_;
    std::string extensao_;
    bool emPasta_ = false;
    std::set<std::string> usados_;
};

class Xml final : public UmPorArquivo {
public:
    explicit Xml(const Contexto& contexto)
        : UmPorArquivo(contexto, ".xml") {}

protected:
    std::string conteudo(const ArquivoValidado& validado) const override {
        return tv::text::toLatin1Markup(documentoDe(validado, *contexto().layout)) + "\n";
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
        if (!documento.loadXML(documentoDe(validado, *contexto().layout))) {
            throw tv::Error(-2147221504, "boletos", "Não foi possível gerar arquivo de resultado");
        }
        return folha_->apply(documento);
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
