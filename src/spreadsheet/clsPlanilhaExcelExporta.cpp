#include "spreadsheet/clsPlanilhaExcel.h"

#include "logging/Routine.h"
#include "platform/Clock.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>

/// Documents out to workbooks.
namespace tv {

namespace {

constexpr std::string_view compromisso = "compromisso";
constexpr std::string_view colunaDeTexto = " varchar(255), ";

std::string nomeEmMinusculas(const XmlNode& no) {
    return text::lower(text::trim(no.name()));
}

/// The steps of a bar that shows a record's children.
std::size_t passos(std::size_t filhos) {
    return filhos == 0 ? 0 : filhos - 1;
}

void cortaDois(std::string& comando) {
    comando.resize(comando.size() - std::min<std::size_t>(comando.size(), 2));
}

/// The operations of an export tell their end in the log on the normal way, too.
void logTermino() noexcept {
    if (Routine::isLogged()) {
        oLogger->logFATAL("[0]");
    }
}

} // namespace

void clsPlanilhaExcel::OpenPlan(const std::string& caminho, std::string_view /*secoes*/) {
    const Routine routine("clsPlanilhaExcel.OpenPlan");
    try {
        exporta(caminho);
        logTermino();
    } catch (const Error& falha) {
        relato_.falha = falha;
        logFailure(falha);
    } catch (const std::exception& falha) {
        relato_.falha = Error(errc::invalidCall, "clsPlanilhaExcel.OpenPlan", falha.what());
        logFailure(falha);
    }
}

void clsPlanilhaExcel::exporta(const std::string& caminho) {
    abrirXML(caminho);
    const std::string base = text::replaceAll(caminhoPlanilha(caminho), ".xls", "") + "_";
    const std::vector<XmlNode> nos = documento_.selectNodes("//" + tag + "/*");
    abreProgresso();
    setMax(nos.size());
    ultimaContagem_ = nos.size();
    contador_ = 0;
    for (const XmlNode& no : nos) {
        exportaNo(no, base);
        if (contador_ == nos.size()) { // the last workbook is written without the document beside it
            porSecao_.clear();
            documento_ = XmlDocument();
        }
        gravaPlanilha();
    }
    fechaProgresso();
    if (tela_ != nullptr) {
        tela_->informa("Exportação concluída com sucesso!", "Tramador Veldor");
    }
}

/// One child of the root element into a workbook of its own.
void clsPlanilhaExcel::exportaNo(const XmlNode& no, const std::string& base) {
    const std::string planilha =
        base + "_" + nomeEmMinusculas(no) + "_" + getSufixoArquivo({}, contador_) + ".xls";
    setMsg("Exportando Arquivo XML: " + caminhoXml(planilha), "Nome do Arq. XLS: " + planilha,
           contador_ == 0 ? 0 : 1, static_cast<int>(ultimaContagem_));
    porSecao_.clear();
    criadas_.clear();
    perdidas_.clear();
    perdaPorMotivo_.clear();
    planilha_ = planilha;
    conexao_.emplace(std::filesystem::path(planilha));
    if (isAgrupado(tag)) {
        exportaSecoes(no);
    } else if (const std::string nome = nomeEmMinusculas(no); isNovaSecao(nome)) {
        criarPlanilha(no, nome);
    }
    ++contador_;
    incProgress();
}

void clsPlanilhaExcel::gravaPlanilha() {
    conexao_->close();
    conexao_.reset();
    ultimaSecao_.clear();
    relato_.planilhas.push_back(planilha_);
}

void clsPlanilhaExcel::exportaSecoes(const XmlNode& no) {
    const std::vector<XmlNode> filhos = no.childElements();
    ultimaContagem_ = filhos.size();
    for (const XmlNode& filho : filhos) {
        if (const std::string nome = nomeEmMinusculas(filho); isNovaSecao(nome)) {
            criarPlanilha(no, nome);
        }
    }
}

std::string clsPlanilhaExcel::getSufixoArquivo(std::string_view /*ignorado*/, std::size_t contador) {
    constexpr std::size_t algarismos = 3;
    std::string numero = std::to_string(contador);
    if (numero.size() < algarismos) {
        numero.insert(0, algarismos - numero.size(), '0');
    }
    const DateTime agora = clock::now();
    return numero + "_" + format::format(agora, "YYYYMMDD") + "_" + format::format(agora, "HHMMSS");
}

/// Collapses runs of one name that stand next to each other, and nothing more.
bool clsPlanilhaExcel::isNovaSecao(const std::string& nome) {
    if (!ultimaSecao_.empty() && ultimaSecao_ == nome) {
        return false;
    }
    ultimaSecao_ = nome;
    return true;
}

// --- one sheet

void clsPlanilhaExcel::criarPlanilha(const XmlNode& no, const std::string& secao) {
    const Routine routine("clsPlanilhaExcel.criarPlanilha");
    try {
        conexao_->execute(comandoCreate(no, secao));
        criadas_.insert(secao);
        exportarCampos(no, secao);
        logTermino();
    } catch (const std::exception& falha) {
        contaSecaoPerdida(no, secao, falha);
        logFailure(falha);
    }
}

/// The fields of a `compromisso` get their columns behind `percprovcred`, by that name alone, and only where
/// the records are looked up below `no`: in a layout without a group they get none.
std::string clsPlanilhaExcel::comandoCreate(const XmlNode& no, const std::string& secao) {
    Registros& registros = registrosDe(no, secao);
    const std::vector<std::string>& doCompromisso = camposCompromisso(registros);
    setMsg("Criando Planilha", "Planilha: " + secao, 0, 0);
    const bool agrupado = isAgrupado(tag);
    const XmlNode modelo = agrupado ? (registros.nos.empty() ? XmlNode() : registros.nos.front()) : no;
    const std::vector<XmlNode> filhos = modelo.childElements();
    ultimaContagem_ = filhos.size();
    setMax(passos(filhos.size()));
    std::string comando = "CREATE TABLE " + secao + "( ";
    for (const XmlNode& filho : filhos) {
        const std::string nome = nomeEmMinusculas(filho);
        if (nome != compromisso) {
            comando.append(agrupado ? filho.name() : std::string_view(nome)).append(colunaDeTexto);
        }
        if (nome == "percprovcred") {
            for (const std::string& campo : doCompromisso) {
                comando.append(campo).append(colunaDeTexto);
            }
        }
        incProgress();
    }
    cortaDois(comando);
    return comando + ") ";
}

/// Records come in runs, and a run may come back after another one: what was looked up serves again.
clsPlanilhaExcel::Registros& clsPlanilhaExcel::registrosDe(const XmlNode& no, const std::string& secao) {
    const auto [achado, novo] = porSecao_.try_emplace(secao);
    if (novo) {
        achado->second.nos = no.selectNodes(secao);
    }
    return achado->second;
}

/// The names below the first record's `compromisso`, of the first record that has one.
const std::vector<std::string>& clsPlanilhaExcel::camposCompromisso(Registros& registros) const {
    if (registros.compromisso) {
        return *registros.compromisso;
    }
    std::vector<std::string> nomes;
    bool achou = false;
    for (const XmlNode& registro : registros.nos) {
        if (achou) {
            break;
        }
        for (XmlNode filho = registro.firstElement(); filho; filho = filho.nextElement()) {
            if (nomeEmMinusculas(filho) != compromisso) {
                continue;
            }
            achou = true;
            for (const XmlNode& campo : registro.child(compromisso).childElements()) {
                nomes.push_back(nomeEmMinusculas(campo));
            }
        }
    }
    std::erase_if(nomes, [](const std::string& nome) { return text::trim(nome).empty(); });
    registros.compromisso = std::move(nomes);
    return *registros.compromisso;
}

// --- records

/// Whatever fails is passed over: a record that the sheet does not take is lost.
void clsPlanilhaExcel::exportarCampos(const XmlNode& no, const std::string& secao) {
    const Routine routine("clsPlanilhaExcel.exportarCampos");
    std::vector<XmlNode> daRaiz;
    const bool agrupado = isAgrupado(tag);
    if (!agrupado) {
        proceed([&] { daRaiz = documento_.selectNodes("//" + tag + "/" + secao); });
    }
    for (const XmlNode& registro : agrupado ? registrosDe(no, secao).nos : daRaiz) {
        try {
            insere(registro, secao);
        } catch (const std::exception& falha) {
            contaPerda(secao, falha);
        }
    }
}

void clsPlanilhaExcel::insere(const XmlNode& registro, const std::string& secao) {
    const std::vector<XmlNode> filhos = registro.childElements();
    ultimaContagem_ = filhos.size();
    setMax(passos(filhos.size()));
    std::string& comando = comando_;
    comando.assign("INSERT INTO ").append(secao).append("( ");
    std::string nomeDoCampo;
    for (const XmlNode& filho : filhos) {
        if (progresso_) {
            nomeDoCampo.assign("Nome do campo: ").append(filho.name());
            setMsg("Exportando campos", nomeDoCampo, 0, 0);
        }
        if (filho.name() != compromisso) {
            comando.append(filho.name()).append(", ");
            continue;
        }
        for (const XmlNode& campo : registro.child(compromisso).childElements()) {
            comando.append(campo.name()).append(", ");
        }
    }
    cortaDois(comando);
    comando.append(") ").append("VALUES (");
    std::string junto;
    for (const XmlNode& filho : filhos) {
        if (filho.name() != compromisso) {
            comando.append("'").append(filho.text(junto)).append("', ");
            continue;
        }
        for (const XmlNode& campo : registro.child(compromisso).childElements()) {
            comando.append("'").append(campo.text(junto)).append("', ");
        }
    }
    cortaDois(comando);
    comando.append(") ");
    conexao_->execute(comando);
}

// --- what was lost

void clsPlanilhaExcel::contaPerda(const std::string& secao, const std::exception& falha,
                                  std::size_t registros) {
    std::vector<PerdaDeRegistros>& perdas = relato_.perdas;
    const auto [achada, nova] = perdaPorMotivo_.try_emplace(secao + '\n' + falha.what(), perdas.size());
    if (nova) {
        perdas.push_back({planilha_, secao, falha.what(), 0});
    }
    perdas[achada->second].registros += registros;
}

/// A section that comes back finds its sheet there with all its records: nothing is lost then.
void clsPlanilhaExcel::contaSecaoPerdida(const XmlNode& no, const std::string& secao,
                                         const std::exception& falha) {
    if (criadas_.contains(secao) || !perdidas_.insert(secao).second) {
        return;
    }
    std::size_t registros = 1;
    if (isAgrupado(tag)) {
        const std::vector<XmlNode> filhos = no.childElements();
        registros =
            static_cast<std::size_t>(std::count_if(filhos.begin(), filhos.end(), [&](const XmlNode& filho) {
                return nomeEmMinusculas(filho) == secao;
            }));
    }
    contaPerda(secao, falha, registros);
}

} // namespace tv
