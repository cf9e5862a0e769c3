#include "composer/nomeDoArquivo.h"

#include "composer/mestres.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace tv::nomeDoArquivo {
namespace {

constexpr std::string_view formaData = "YYYYMMDD";

std::string hoje() {
    return format::format(clock::now(), formaData);
}

std::string normal(std::string_view texto) {
    return text::lower(text::trim(texto));
}

std::string aparado(const std::string& texto) {
    return std::string(text::trim(texto));
}

const clsCampo& chaveDe(const std::shared_ptr<const clsSecao>& mestre) {
    if (mestre == nullptr || mestre->getCampoChave() == nullptr) {
        throw Error(errc::objectNotSet, "frmTramador.salvarBoleto", "Não há campo chave");
    }
    return *mestre->getCampoChave();
}

/// The key field of the document's first masters.
const clsCampo& campoChave(const clsBoleto& layout) {
    const clsSecao& primeira = *layout.getSecoes().Item(1);
    const std::shared_ptr<const clsSecao>& mestre = layout.getSecaoMestre();
    const bool isPrimeira = mestre != nullptr && mestre->getTag() == primeira.getTag();
    return chaveDe(isPrimeira ? mestre : primeira.getSecaoMestre());
}

/// The name of documents of the other versions.
std::string primeiroNome(const clsBoleto& layout, const RecordSet& linhas) {
    std::string nome = "LT";
    if (linhas.RecordCount() == 1) {
        nome = defaultText(linhas.get(campoChave(layout).getTag()));
    }
    return nome + "_" + hoje() + "_";
}

/// The name without what would make a path of it: values of a document go into names.
std::string semPasta(std::string nome) {
    std::replace_if(
        nome.begin(), nome.end(),
        [](char c) { return c == '/' || c == '\\' || (static_cast<unsigned char>(c) < 0x20); }, '_');
    return nome;
}

} // namespace

std::string proposta(const Documento& documento) {
    const mestres::Grades grades = mestres::acha(documento);
    const mestres::Contagem contagem = mestres::conta(grades);
    const std::unique_ptr<RecordSet> a = grades.a->dados->Clone();
    const std::unique_ptr<RecordSet> b = grades.b->dados->Clone();
    const std::string tipo = contagem.a > 0 && contagem.b > 0 ? "lote"
                             : contagem.a > 0                 ? "fundo"
                                                              : "carteira";
    const clsBoleto& layout = documento.layout();
    const std::string nome = propoeNomeArquivo(contagem.a > 0 ? a.get() : b.get(), primeiroNome(layout, *a),
                                               layout.getVersao(), tipo);
    return text::trim(nome).empty() ? documento.estado.arquivo : semPasta(nome);
}

std::string propoeNomeArquivo(RecordSet* linhas, const std::string& nome, std::string_view versao,
                              std::string_view tipo) {
    if (versao != "4.00.00" && versao != "4.01.00") {
        return nome;
    }
    const std::string montado = montaNomeArquivo(linhas, tipo);
    if (montado.empty()) {
        return {}; // the kind alone is no name
    }
    return aparado(siglaTipoArquivo(tipo) + montado) + ".xml";
}

std::string siglaTipoArquivo(std::string_view tipo) {
    const std::string normalizado = text::lower(tipo);
    if (normalizado == "fundo") {
        return "FD";
    }
    if (normalizado == "carteira") {
        return "CT";
    }
    return normalizado == "lote" ? "LT" : "";
}

std::string montaNomeArquivo(RecordSet* linhas, std::string_view tipo) {
    if (linhas == nullptr || linhas->RecordCount() != 1 || linhas->EOF_()) {
        return {};
    }
    const std::string cnpj = aparado(defaultText(linhas->get(campoNomeArquivo(tipo, "cnpj"))));
    std::string dtposicao;
    if (!isNull(linhas->get("dtposicao"))) {
        dtposicao = format::format(linhas->get(campoNomeArquivo(tipo, "dtposicao")), formaData);
    }
    const std::string nome = aparado(defaultText(linhas->get(campoNomeArquivo(tipo, "nome"))));
    if (cnpj.empty() || dtposicao.empty()) {
        return {};
    }
    return aparado(cnpj + "_" + dtposicao + "_" + hoje() + "_" + format::format(clock::now(), "HHMMSS") +
                   "_" + nome);
}

std::string campoNomeArquivo(std::string_view tipo, std::string_view campo) {
    struct Linha {
        std::string_view tipo;
        std::string_view cnpj;
    };
    constexpr auto tipos =
        std::to_array<Linha>({{"fundo", "cnpj"}, {"carteira", "codcart"}, {"lote", "cnpj"}});
    const std::string doTipo = normal(tipo);
    const std::string doCampo = normal(campo);
    for (const Linha& linha : tipos) {
        if (linha.tipo == doTipo) {
            if (doCampo == "cnpj") {
                return std::string(linha.cnpj);
            }
            return doCampo == "dtposicao" || doCampo == "nome" ? doCampo : "";
        }
    }
    return {};
}

std::filesystem::path copia(const std::filesystem::path& arquivo) {
    const std::string nome = text::replaceAll(files::toText(arquivo.filename()), ".", "_");
    return arquivo.parent_path() / (nome + "_" + hoje() + ".bkp");
}

} // namespace tv::nomeDoArquivo
