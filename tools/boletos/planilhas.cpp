#include "Catalogo.h"
#include "Relatorio.h"
#include "Saida.h"
#include "comandos.h"

#include "app/Aplicacao.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"
#include "spreadsheet/clsPlanilhaExcel.h"

#include <cstdio>

namespace boletos {

namespace {

[[noreturn]] void recusa(std::int32_t numero, const std::string& motivo) {
    throw tv::Error(numero, "boletos", motivo);
}

void avisa(const std::filesystem::path& arquivo, const std::string& aviso) {
    static_cast<void>(std::fprintf(stderr, "boletos: %s: %s\n", nomeVisivel(arquivo).c_str(), aviso.c_str()));
}

void escreveCaminhos(const std::vector<std::string>& caminhos) {
    Saida saida({});
    for (const std::string& caminho : caminhos) {
        saida.escreve(caminho + "\n");
    }
    saida.termina();
}

void confereArquivo(const std::filesystem::path& arquivo) {
    if (!tv::files::exists(arquivo)) {
        recusa(tv::errc::fileNotFound, "O arquivo '" + nomeVisivel(arquivo) + "' não existe.");
    }
}

// Why the operation could not do its work, in one sentence.
std::string motivoDe(const tv::Error& falha) {
    return falha.number() == tv::clsPlanilhaExcel::erroAbertura
               ? falha.description() + " " + falha.source() // the parser's reason
               : falha.description();
}

std::string contados(std::size_t registros) {
    return registros == 1 ? "1 registro perdido" : std::to_string(registros) + " registros perdidos";
}

// The records that no sheet took, by workbook, section and reason.
void avisaPerdas(const std::filesystem::path& arquivo, const tv::RelatoPlanilha& relato) {
    for (const tv::PerdaDeRegistros& perda : relato.perdas) {
        avisa(perda.planilha, perda.secao + ": " + contados(perda.registros) + ": " + perda.motivo);
    }
    if (relato.perdas.size() > 1) {
        avisa(arquivo, contados(relato.registrosPerdidos()) + " ao todo");
    }
}

bool dizARaiz(std::string_view caminho) {
    return tv::text::contains(caminho, "fundo") || tv::text::contains(caminho, "carteira");
}

// Where the document of a workbook will stand.
std::string documentoDe(const std::filesystem::path& planilha) {
    const std::string nome = planilha.string();
    std::string documento = tv::clsPlanilhaExcel::caminhoXml(nome);
    if (documento == nome || nome.find(';') != std::string::npos) {
        recusa(tv::errc::invalidCall,
               "O nome da planilha '" + nomeVisivel(planilha) + "' deve terminar em .xls e não conter ';'.");
    }
    if (tv::files::exists(documento)) {
        recusa(tv::errc::fileExists, "O documento '" + nomeVisivel(documento) +
                                         "' já existe; apague-o ou dê outro nome à planilha.");
    }
    return documento;
}

// The document's text goes with the object, before the document is read again.
tv::RelatoPlanilha importa(const tv::clsBoleto& layout, const std::filesystem::path& arquivo) {
    tv::clsPlanilhaExcel planilha;
    planilha.tag = layout.getTag();
    planilha.arquivo = arquivo.string();
    planilha.ImportarPlanilha(planilha.arquivo);
    return planilha.relato();
}

// What a reader of the document would stumble over.
std::vector<std::string> defeitosDe(const std::string& documento, const tv::clsBoleto& layout,
                                    const tv::RelatoPlanilha& relato) {
    std::vector<std::string> defeitos;
    if (tv::clsPlanilhaExcel::isAgrupado(layout.getTag()) && !dizARaiz(documento)) {
        defeitos.emplace_back(
            "O caminho da planilha não contém 'fundo' nem 'carteira'; o documento não tem nem um "
            "nem outro.");
    }
    if (relato.tabelas == 0) {
        defeitos.emplace_back("A planilha não tem nenhuma folha com o nome de uma seção do layout.");
    }
    tv::XmlDocument lido;
    if (!lido.load(std::filesystem::path(documento))) {
        defeitos.push_back("O documento não é XML bem formado: " + lido.parseError());
    }
    return defeitos;
}

} // namespace

int exportar(const PedidoPlanilha& pedido) {
    const Catalogo catalogo(pedido.pasta);
    tv::clsPlanilhaExcel planilha;
    planilha.tag = catalogo.layout(pedido.layout)->getTag();
    planilha.arquivo = pedido.arquivo.string();
    confereArquivo(pedido.arquivo);
    planilha.OpenPlan(planilha.arquivo, "");

    const tv::RelatoPlanilha& relato = planilha.relato();
    escreveCaminhos(relato.planilhas);
    avisaPerdas(pedido.arquivo, relato);
    if (relato.falha) {
        avisa(pedido.arquivo, motivoDe(*relato.falha));
        return status::falha;
    }
    if (relato.planilhas.empty()) {
        avisa(pedido.arquivo, "O documento não tem nada do layout '" + planilha.tag + "'.");
        return status::falha;
    }
    return relato.perdas.empty() ? status::valido : status::invalido;
}

int importar(const PedidoPlanilha& pedido) {
    const Catalogo catalogo(pedido.pasta);
    tv::aplicacao::setPasta(pedido.pasta);
    const std::shared_ptr<const tv::clsBoleto> layout = catalogo.layout(pedido.layout);
    confereArquivo(pedido.arquivo);
    const std::string documento = documentoDe(pedido.arquivo);
    const tv::RelatoPlanilha relato = importa(*layout, pedido.arquivo);
    if (relato.falha) {
        avisa(pedido.arquivo, motivoDe(*relato.falha));
        return status::falha;
    }
    escreveCaminhos({documento});
    const std::vector<std::string> defeitos = defeitosDe(documento, *layout, relato);
    for (const std::string& defeito : defeitos) {
        avisa(documento, defeito);
    }
    return defeitos.empty() ? status::valido : status::invalido;
}

} // namespace boletos
