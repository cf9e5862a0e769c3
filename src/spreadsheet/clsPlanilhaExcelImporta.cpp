#include "spreadsheet/clsPlanilhaExcel.h"

#include "app/Aplicacao.h"
#include "logging/Routine.h"
#include "platform/Files.h"
#include "platform/text.h"

#include <algorithm>
#include <new>

/// Workbooks back to a document.
namespace tv {

namespace {

constexpr std::string_view fimDeLinha = "\r\n";

/// "<fundo>" or "<carteira>" by the workbook's path, folders included; empty when it tells neither.
std::string raizDe(std::string_view caminho) {
    for (const std::string_view palavra : {"fundo", "carteira"}) {
        if (text::contains(caminho, palavra)) {
            return "<" + std::string(palavra) + ">";
        }
    }
    return {};
}

std::string semSinais(std::string_view raiz) {
    return text::replaceAll(text::replaceAll(raiz, "<", ""), ">", "");
}

std::string folha(std::string_view nome) {
    return "[" + std::string(text::trim(nome)) + "$]";
}

/// False where a file stands already. Making it tells so, and a look before could not: a document must never
/// be taken for one that is not there.
bool criaVazio(const std::filesystem::path& documento) {
    try {
        files::create(documento, {});
        return true;
    } catch (const Error& falha) {
        if (falha.number() != errc::fileExists) {
            throw;
        }
        return false;
    }
}

} // namespace

void clsPlanilhaExcel::ImportarPlanilha(const std::string& caminho) {
    const Routine routine("clsPlanilhaExcel.ImportarPlanilha");
    try {
        importa(caminho);
    } catch (const Error& falha) {
        relato_.falha = falha;
        logFailure(falha);
    } catch (const std::exception& falha) {
        relato_.falha = Error(errc::invalidCall, "clsPlanilhaExcel.ImportarPlanilha", falha.what());
        logFailure(falha);
    }
}

void clsPlanilhaExcel::importa(const std::string& caminho) {
    const std::string raiz = raizDe(caminho);
    if (xmlSaida_.empty()) {
        escreveInicio(raiz);
    }
    const std::filesystem::path planilha(caminho);
    if (!files::exists(planilha)) { // a new workbook would have nothing to give
        throw Error(errc::fileNotFound, "clsPlanilhaExcel.ImportarPlanilha",
                    "A planilha não foi encontrada: " + caminho);
    }
    conexao_.emplace(planilha);
    gravarXML(conexao_->connectionString()); // the document is not there yet: it comes into being, empty
    abrirXML(aplicacao::arquivo("\\TORVA_TramadorValidador.xml"));
    leSecoes(semSinais(raiz));
    if (!xmlSaida_.empty()) {
        escreveFim(raiz);
        gravarXML(conexao_->connectionString());
    }
    conexao_.reset();
}

void clsPlanilhaExcel::escreveLinha(std::string_view texto) {
    xmlSaida_.append(texto).append(fimDeLinha);
}

void clsPlanilhaExcel::escreveInicio(const std::string& raiz) {
    escreveLinha("<?xml version='1.0' encoding='ISO-8859-1' ?>");
    escreveLinha("<" + tag + ">");
    if (isAgrupado(tag)) {
        escreveLinha(raiz);
    }
}

void clsPlanilhaExcel::escreveFim(const std::string& raiz) {
    if (isAgrupado(tag)) {
        escreveLinha("");
        escreveLinha(text::replaceAll(raiz, "<", "</"));
    }
    xmlSaida_.append("</" + tag + ">");
}

/// Which sheets are read, and where the catalog names them.
void clsPlanilhaExcel::leSecoes(const std::string& raiz) {
    const std::string minuscula = text::lower(tag);
    const std::string secoes = "//BOLETOS/BOLETO[@tag='" + tag + "']/SECAO";
    if (minuscula == "arquivoposicao_2_01" || minuscula == "posicao_passivo_analitico_v100") {
        lerPlanilhas(documento_.selectNodes(secoes), "");
        return;
    }
    const std::vector<XmlNode> nos = documento_.selectNodes(secoes + "[@tag='" + raiz + "']/*");
    const bool todas = minuscula == "arquivoposicao_3_00" || minuscula == "movimento_1_00" ||
                       minuscula == "movimento_2_00" || minuscula == "arquivoposicao_4_01";
    lerPlanilhas(nos, todas ? std::string() : raiz);
}

/// Whatever fails is passed over, first of all a sheet that the workbook lacks. Only where memory runs out
/// the user is told, since the document lacks then what the workbook has.
void clsPlanilhaExcel::lerPlanilhas(const std::vector<XmlNode>& nos, const std::string& secao) {
    const Routine routine("clsPlanilhaExcel.lerPlanilhas");
    const auto tenta = [this](const auto& leitura) {
        try {
            leitura();
        } catch (const std::bad_alloc& falha) {
            relato_.falha = Error(errc::invalidCall, "clsPlanilhaExcel.lerPlanilhas", falha.what());
            logFailure(falha);
        } catch (const std::exception&) {
            return;
        }
    };
    if (!secao.empty()) {
        tenta([&] { lePlanilha(folha(secao)); });
        return;
    }
    for (const XmlNode& no : nos) {
        tenta([&] { lePlanilha(folha(no.attributes().at(0).second)); });
    }
}

void clsPlanilhaExcel::lePlanilha(const std::string& nome) {
    registros_ = conexao_->select("SELECT * FROM " + text::lower(nome));
    importarTabela(registros_, nome);
    registros_ = {};
    ++relato_.tabelas;
}

// --- one sheet

void clsPlanilhaExcel::importarTabela(const WorkbookTable& registros, const std::string& nomeTabela) {
    guarded("clsPlanilhaExcel.importarTabela", [&] {
        std::string secao = nomeTabela;
        std::erase_if(secao, [](char c) { return c == ']' || c == '$' || c == '['; });
        secao = text::trim(std::string(secao));
        abreProgresso();
        setMax(registros.rows.size());
        colunas_ = colunasDe(registros);
        const bool isHeader = secao == "header";
        const std::string abertura = "<" + secao + ">";
        const std::string fechamento = "</" + secao + ">";
        const std::string andamento = "processando informações da tabela:" + secao;
        bool primeira = true;
        for (const auto& linha : registros.rows) {
            if (!isHeader || primeira) { // a document has one header
                escreveLinha(abertura);
                setMsg("Exportação de planilha", andamento, 0, 0);
                escreveRegistro(linha, isHeader);
                escreveLinha(fechamento);
            }
            primeira = false;
            incProgress();
        }
        fechaProgresso();
    });
}

void clsPlanilhaExcel::escreveRegistro(const std::vector<std::optional<std::string>>& linha,
                                       bool todosOsCampos) {
    const bool temCompromisso = getCamposCompromisso(linha);
    const bool comGrupo = temCompromisso && tag == "arquivoposicao_3_00";
    for (std::size_t i = 0; i < colunas_.size(); ++i) {
        const Coluna& coluna = colunas_[i];
        if (comGrupo && coluna.nome == "dtretorno") {
            escreveLinha("<compromisso>");
        }
        if (todosOsCampos || incluirCampo(coluna, temCompromisso)) {
            const std::string_view valor = linha[i] ? text::trim(*linha[i]) : std::string_view();
            xmlSaida_.append("<").append(coluna.nome).append(">").append(valor);
            xmlSaida_.append("</").append(coluna.nome).append(">").append(fimDeLinha);
        }
        if (comGrupo && coluna.nome == "classecomp") {
            escreveLinha("</compromisso>");
        }
    }
}

/// The range of `compromisso` begins at `dtretorno` and ends before `classeoperacao`, or with the sheet. It
/// is the same for every row.
std::vector<clsPlanilhaExcel::Coluna> clsPlanilhaExcel::colunasDe(const WorkbookTable& registros) {
    std::vector<Coluna> colunas;
    std::set<std::string, std::less<>> lista;
    bool dentro = false;
    for (const std::string& nome : registros.columns) {
        Coluna coluna;
        coluna.nome = text::trim(nome);
        const std::string minuscula = text::lower(coluna.nome);
        dentro = minuscula == "dtretorno" || (dentro && minuscula != "classeoperacao");
        coluna.noIntervalo = dentro;
        if (dentro) {
            lista.insert(coluna.nome);
        }
        colunas.push_back(std::move(coluna));
    }
    for (Coluna& coluna : colunas) {
        coluna.omissivel = lista.contains(coluna.nome);
    }
    return colunas;
}

/// Whether the row has a `compromisso`: its last field of the range says so, whatever the others hold.
bool clsPlanilhaExcel::getCamposCompromisso(const std::vector<std::optional<std::string>>& linha) const {
    bool temCompromisso = false;
    for (std::size_t i = 0; i < colunas_.size(); ++i) {
        if (colunas_[i].noIntervalo) {
            temCompromisso = linha[i].has_value();
        }
    }
    return temCompromisso;
}

bool clsPlanilhaExcel::incluirCampo(const Coluna& coluna, bool temCompromisso) noexcept {
    return temCompromisso || !coluna.omissivel;
}

// --- the document

/// Where the document stands is told by the store's address. It comes into being empty; what is there gets
/// the text appended. Characters outside of the document's encoding become "?".
void clsPlanilhaExcel::gravarXML(const std::string& conexaoTexto) const {
    constexpr std::string_view origem = "Data Source=";
    for (const std::string_view parte : text::split(conexaoTexto, ';')) {
        if (!text::contains(parte, origem)) {
            continue;
        }
        const std::string caminho = text::replaceAll(caminhoXml(parte), origem, "");
        const std::filesystem::path documento(text::trim(caminho));
        if (!criaVazio(documento)) {
            files::append(documento, text::toLatin1(xmlSaida_).append(fimDeLinha));
        }
        return;
    }
}

} // namespace tv
