#include "composer/LeitorBoleto.h"

#include "composer/datasVazias.h"
#include "composer/fundos.h"
#include "composer/normalizacao.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>

namespace tv {
namespace {

Value inteiro(std::string_view valor) {
    const std::optional<double> numero = text::documentNumber(valor);
    return numero ? Value(std::int32_t{text::toInt16(*numero)}) : Value();
}

Value decimal(std::string_view valor) {
    const std::optional<double> numero = text::documentNumber(valor);
    return numero ? Value(*numero) : Value();
}

Value logico(std::string_view valor) {
    return valor == "S" || valor == "N" ? Value(valor == "S") : Value();
}

Value data(std::string_view valor) {
    if (const auto lida = format::readDate(format::format(valor, "####-##-##"))) {
        return *lida;
    }
    throw Error(errc::typeMismatch, "frmTramador.abrirBoleto_detalhe",
                "Data inválida: " + std::string(valor));
}

/// What a column keeps of a text that is not empty; null where it keeps nothing.
Value valorDaColuna(ColumnType tipo, std::string_view valor) {
    switch (tipo) {
    case ColumnType::Integer:
        return inteiro(valor);
    case ColumnType::Double:
        return decimal(valor);
    case ColumnType::Boolean:
        return logico(valor);
    case ColumnType::FixedChar:
        return std::string(valor);
    case ColumnType::Date:
        return data(valor);
    }
    return {};
}

} // namespace

/// The rows of one section while they are read. Element names are looked up once, not for each field.
struct LeitorBoleto::Linhas {
    struct Campo {
        const clsCampo* campo;
        ColumnType tipo;
        std::string valor; ///< Of the row that is being read.
        bool lido;
    };

    Linhas(const clsSecao& daLinha, std::shared_ptr<RecordSet> rows)
        : secao(daLinha)
        , dados(std::move(rows)) {
        for (const std::shared_ptr<const clsCampo>& campo : secao.getCampos()) {
            posicao.emplace(campo->getTag(), campos.size());
            const Column& coluna = dados->columns()[campos.size()];
            campos.push_back({campo.get(), coluna.type, {}, false});
        }
    }

    /// Takes each field's text: that of the first child element of its name.
    void le(const XmlNode& no) {
        for (Campo& campo : campos) {
            campo.valor.clear();
            campo.lido = false;
        }
        std::string junto;
        for (XmlNode filho = no.firstElement(); filho; filho = filho.nextElement()) {
            const auto achado = posicao.find(filho.name());
            if (achado == posicao.end() || campos[achado->second].lido) {
                continue;
            }
            Campo& campo = campos[achado->second];
            campo.lido = true;
            campo.valor = datasVazias::normalizaValorLido(no.name(), achado->first, filho.text(junto));
        }
    }

    void grava() {
        for (const Campo& campo : campos) {
            if (campo.valor.empty()) {
                continue;
            }
            if (Value valor = valorDaColuna(campo.tipo, campo.valor); !isNull(valor)) {
                dados->set(campo.campo->getTag(), std::move(valor));
            }
        }
    }

    bool isValida() const {
        return std::all_of(campos.begin(), campos.end(),
                           [](const Campo& campo) { return campo.campo->isValido(campo.valor); });
    }

    /// The key field's value in its display form.
    std::string titulo() const {
        const auto chave = std::find_if(campos.rbegin(), campos.rend(),
                                        [](const Campo& campo) { return campo.campo->isCampoChave(); });
        return chave == campos.rend()
                   ? std::string()
                   : format::format(chave->valor, chave->campo->getColuna().getMaskDisplay());
    }

    const clsSecao& secao;
    std::shared_ptr<RecordSet> dados;
    std::vector<Campo> campos;
    std::unordered_map<std::string_view, std::size_t> posicao;
};

LeitorBoleto::LeitorBoleto(Documento& documento, Progresso progresso)
    : documento_(documento)
    , progresso_(std::move(progresso)) {}

LeitorBoleto::~LeitorBoleto() = default;

bool LeitorBoleto::abre(const std::filesystem::path& arquivo) {
    XmlDocument dom;
    if (!dom.load(arquivo)) {
        return false;
    }
    abre(dom);
    documento_.estado.arquivo = files::toText(arquivo);
    documento_.estado.salvo = true;
    return true;
}

void LeitorBoleto::abre(XmlDocument& dom) {
    EstadoDocumento& estado = documento_.estado;
    estado.abrindo = true;
    normalizacao::normalizaParaGrid(dom, documento_.boleto()->getTag());
    estado.noAtual = &documento_.layout();
    documento_.createGrid();
    recordSets_ = documento_.addRSCollection();
    linhas_.clear();
    maiorRowID_ = 0;
    try {
        abreSecoes(dom);
    } catch (...) {
        estado.carregando = false;
        estado.ultimoRowID = maiorRowID_;
        throw;
    }
    estado.ultimoRowID = maiorRowID_; // a fund added later must not take the details of another
    preparaFiltros();
}

/// The tree filters by these columns. Looking rows up once here makes the first click as quick as the others.
void LeitorBoleto::preparaFiltros() const {
    for (const std::shared_ptr<RecordSet>& dados : recordSets_) {
        const std::unique_ptr<RecordSet> clone = dados->Clone();
        clone->Filter("rowID = 0");
        clone->Filter("rowMaster = 0");
    }
}

void LeitorBoleto::abreSecoes(const XmlDocument& dom) {
    const clsBoleto& layout = documento_.layout();
    if (layout.hasGrupo() && layout.getSecoes().Item(1)->getNomeGrupo().empty()) {
        abrirBoleto_detalhe(layout, dom);
        return;
    }
    for (const std::shared_ptr<const clsSecao>& secao : layout.getSecoes()) {
        abrirBoleto_detalhe(*secao, dom);
    }
}

void LeitorBoleto::abrirBoleto_detalhe(const SectionOwner& secao, const XmlDocument& dom) {
    const Routine routine("frmTramador.abrirBoleto_detalhe");
    std::vector<XmlNode> nos = dom.documentElement().selectNodes(caminho(secao) + "/node()");
    std::erase_if(nos, [](const XmlNode& no) { return !no.isElement(); });
    if (!nos.empty() && progresso_.maximo) {
        progresso_.maximo(nos.size());
    }
    documento_.estado.ultimoRowID = 0;
    for (const XmlNode& no : nos) {
        leLinha(secao, no);
        if (progresso_.avanca) {
            progresso_.avanca();
        }
    }
}

/// Where the rows of a top section, or of the layout, lie in a file. The last rule that applies counts.
std::string LeitorBoleto::caminho(const SectionOwner& secao) const {
    const clsBoleto& layout = documento_.layout();
    const std::string raiz = "/" + layout.getTag();
    std::string caminho;
    if (layout.getSecoes().Count() == 1) {
        caminho = raiz;
    }
    if (layout.hasGrupo()) {
        caminho = raiz + "/" + layout.getTagGrupo();
    }
    if (&secao != &layout && !secao.getSecoes().empty()) {
        caminho = raiz + "/" + secao.getTag();
    }
    return caminho;
}

const clsSecao& LeitorBoleto::secaoDaLinha(const SectionOwner& secao, const XmlNode& no) const {
    return secao.getSecoes().empty() ? comoSecao(secao) : *secao.getSecoes().Item(no.name());
}

LeitorBoleto::Linhas& LeitorBoleto::linhasDe(const SectionOwner& secao, const clsSecao& daLinha) {
    std::unique_ptr<Linhas>& linhas = linhas_[&daLinha];
    if (linhas == nullptr) {
        const bool noLayout = documento_.estado.noAtual == &documento_.layout();
        std::string chave = documento_.layout().getTag() + "_";
        chave += (noLayout ? "" : secao.getTag() + "_") + daLinha.getTag();
        linhas = std::make_unique<Linhas>(daLinha, recordSets_.Item(chave));
    }
    return *linhas;
}

void LeitorBoleto::leLinha(const SectionOwner& secao, const XmlNode& no) {
    EstadoDocumento& estado = documento_.estado;
    Linhas& linhas = linhasDe(secao, secaoDaLinha(secao, no));
    estado.carregando = true;
    linhas.dados->AddNew();
    estado.carregando = false;
    linhas.le(no);
    linhas.grava();
    if (linhas.secao.isSecaoMestre()) {
        fechaMestre(secao, linhas);
    } else {
        linhas.dados->set("rowMaster", estado.ultimoRowID);
    }
    linhas.dados->Update();
}

/// A master with a field at fault is loaded, but has no node in the tree.
void LeitorBoleto::fechaMestre(const SectionOwner& secao, Linhas& linhas) {
    EstadoDocumento& estado = documento_.estado;
    linhas.dados->set("rowID", ++estado.ultimoRowID);
    maiorRowID_ = std::max(maiorRowID_, estado.ultimoRowID);
    if (linhas.isValida() && documento_.arvoreVisivel()) {
        fundos::addFundo2TreeView(documento_, secao, estado.ultimoRowID, linhas.titulo());
    }
}

} // namespace tv
