#include "validation/RegrasEntreCampos.h"

#include "logging/Routine.h"
#include "platform/format.h"
#include "platform/text.h"
#include "validation/LeituraNumero.h"

#include <cmath>
#include <unordered_map>

namespace tv {

namespace {

constexpr double tolerancia = 500.0;

// How the value of one element of a section comes about.
double menosTributos(const XmlNode& no, std::string_view campo) {
    return leNumero(no, campo) - leNumero(no, "tributos");
}
double disponivelMaisGarantia(const XmlNode& no) {
    return leNumero(no, "valorfindisp") + leNumero(no, "valorfinemgar") - leNumero(no, "tributos");
}
double valorFinanceiroLiquido(const XmlNode& no) {
    return menosTributos(no, "valorfinanceiro");
}
double valorFinLiquido(const XmlNode& no) {
    return menosTributos(no, "valorfin");
}
double ajusteLiquido(const XmlNode& no) {
    return menosTributos(no, "vlajuste");
}
double pontasDoSwap(const XmlNode& no) {
    return leNumero(no, "vlmercadoativo") - leNumero(no, "vlmercadopassivo") - leNumero(no, "tributos");
}
double saldo(const XmlNode& no) {
    return leNumero(no, "saldo");
}
double valorDasCotas(const XmlNode& no) {
    const double puposicao = leNumero(no, "puposicao");
    return leNumero(no, "qtgarantia") * puposicao + leNumero(no, "qtdisponivel") * puposicao -
           leNumero(no, "tributos");
}
double valorContabil(const XmlNode& no) {
    return leNumero(no, "valorcontabil");
}
double valorFinanceiro(const XmlNode& no) {
    return leNumero(no, "valorfinanceiro");
}

// The asset sections in the order of their sums. The asymmetries (the field `valorfin` of termorf, the class
// that applies to opcoesmoedasotc but not to forwardsmoedas) are the market's.
struct SecaoDeAtivos {
    std::string_view tag;
    double (*valor)(const XmlNode&);
    bool comClasse;
    std::string_view rotulo;
    std::string_view descricao;
};

constexpr std::array<SecaoDeAtivos, 18> secoesDeAtivos{{
    {"titpublico", disponivelMaisGarantia, true, "Total Tit.Publico", "Somatória total de Títulos Públicos"},
    {"titprivado", disponivelMaisGarantia, true, "Total Tit.Privado", "Somatória total de Títulos Privados"},
    {"debenture", disponivelMaisGarantia, true, "Total Debenture", "Somatória total de Debentures"},
    {"acoes", disponivelMaisGarantia, true, "Total Ações", "Somatória total de Ações"},
    {"opcoesacoes", valorFinanceiroLiquido, true, "Total Opções Ações", "Somatória total de Opções Ações"},
    {"opcoesderiv", valorFinanceiroLiquido, true, "Total Opções Derivativos",
     "Somatória total de Opções Derivativos"},
    {"opcoesflx", valorFinanceiroLiquido, true, "Total Opções Flexiveis",
     "Somatória total de Opções Flexiveis"},
    {"termorv", valorFinanceiroLiquido, false, "Total Renda Variavel",
     "Somatória total de Termo de Renda Variavel"},
    {"termorf", valorFinLiquido, false, "Total Renda Fixa", "Somatória total de Termo de Renda Fixa"},
    {"futuros", ajusteLiquido, false, "Total Futuros", "Somatória total de Futuros"},
    {"swap", pontasDoSwap, false, "Total Swap", "Somatória total de Swap"},
    {"caixa", saldo, false, "Total Caixa", "Somatória total de Caixa"},
    {"cotas", valorDasCotas, false, "Total Cotas", "Somatória total de Cotas"},
    {"imoveis", valorContabil, false, "Total Imoveis", "Somatória total de Imoveis"},
    {"opcoesmoedasotc", valorFinanceiroLiquido, true, "Total Opções Moedas OTC",
     "Somatória total de Opções Moedas OTC"},
    {"forwardsmoedas", valorFinanceiroLiquido, false, "Total Forwards Moedas",
     "Somatória total de Forwards Moedas"},
    {"participacoes", valorFinanceiro, false, "Total Participações", "Somatória total de Participações"},
    {"fidc", valorFinanceiro, false, "Total FIDC", "Somatória total de FIDC"},
}};

const SecaoDeAtivos* procura(std::string_view tag) {
    static const auto porTag = [] {
        std::unordered_map<std::string_view, const SecaoDeAtivos*> mapa;
        for (const SecaoDeAtivos& secao : secoesDeAtivos) {
            mapa.emplace(secao.tag, &secao);
        }
        return mapa;
    }();
    const auto found = porTag.find(tag);
    return found == porTag.end() ? nullptr : found->second;
}

// A child's name as the rules compare it: blanks cut, lower case.
std::string_view nomeComparado(const XmlNode& no, std::string& buffer) {
    const std::string_view nome = text::trim(no.name());
    if (text::isFolded(nome)) {
        return nome;
    }
    buffer = text::lower(nome);
    return buffer;
}

// One line of the statement of sums.
std::string linhaDoTotal(std::string_view rotulo, double valor, std::string_view tipo,
                         std::string_view fimDoCaminho, std::string_view chave, std::string_view descricao) {
    std::string linha = "<RESULTADO lastElement='";
    linha.append(rotulo).append("' TAGvalor='").append(format::format(Value(valor), "############0.00"));
    linha.append("' path='arquivoposicao_4_00.").append(tipo).append(fimDoCaminho);
    linha.append("' keyValor='")
        .append(chave)
        .append("' errCode='-2147221503' "
                "strLabel='O valor do campo não corresponde à verificação entre "
                "campos'>");
    linha.append("<strDescription><![CDATA[")
        .append(descricao)
        .append("]]></strDescription></RESULTADO>\r\n");
    return linha;
}

} // namespace

void RegrasEntreCampos::verificaArquivo(const XmlDocument& documento, std::string_view tag) {
    guarded("clsValidador.verificaArquivo", [&] {
        const std::string comparada = text::lower(tag);
        if (!text::contains(comparada, "4_01") && !text::contains(comparada, "4_00")) {
            return;
        }
        if (documento.empty()) {
            return;
        }
        std::string buffer;
        for (const XmlNode& no : documento.selectNodes("//" + std::string(tag) + "/*")) {
            verificaAtivos(no, std::string(nomeComparado(no, buffer)));
        }
    });
}

double RegrasEntreCampos::ajustaClasseOperacao(const XmlNode& no, double valor, bool& ignorar) {
    ignorar = false;
    return guarded("clsValidador.ajustaClasseOperacao", 0.0, [&] {
        const XmlNode classe = no.child("classeoperacao");
        if (!classe) {
            return valor;
        }
        std::string buffer;
        const std::string_view texto = text::trim(classe.text(buffer));
        if (texto == "C" || texto == "D") {
            return valor;
        }
        const bool temCompromisso = static_cast<bool>(no.child("compromisso"));
        if (texto == "T" || (texto == "V" && temCompromisso)) {
            ignorar = true;
            return 0.0;
        }
        return texto == "V" ? valor * -1.0 : 0.0;
    });
}

void RegrasEntreCampos::soma(const XmlNode& filho, std::string_view nome, Totais& totais) const {
    if (nome == "header") {
        totais.valorativos = leNumero(filho, "valorativos");
        totais.chave = std::string(text::trim(filho.firstChild().text()));
        return;
    }
    const SecaoDeAtivos* secao = procura(nome);
    if (secao == nullptr) {
        return;
    }
    double valor = confere(secao->valor(filho));
    if (secao->comClasse) {
        bool ignorar = false;
        const double ajustado = ajustaClasseOperacao(filho, valor, ignorar);
        valor = ignorar ? 0.0 : ajustado;
    }
    double& somada = totais.somas.at(static_cast<std::size_t>(secao - secoesDeAtivos.data()));
    somada = confere(somada + valor);
}

void RegrasEntreCampos::verificaAtivos(const XmlNode& no, const std::string& tipo) {
    guarded("clsValidador.verificaAtivos", [&] {
        Totais totais;
        std::string buffer;
        for (XmlNode filho = no.firstElement(); filho; filho = filho.nextElement()) {
            soma(filho, nomeComparado(filho, buffer), totais);
        }
        for (const double parcela : totais.somas) {
            totais.total = confere(totais.total + parcela);
        }
        const double arredondado = text::roundHalfEven(totais.total, 2);
        if (std::abs(confere(totais.valorativos - arredondado)) > tolerancia) {
            fragmentos_ += montaTotais(totais, tipo);
        }
        verificaOperacoes(no.childElements(), tipo, totais.chave);
    });
}

std::string RegrasEntreCampos::montaTotais(const Totais& totais, std::string_view tipo) {
    static_assert(secoesDeAtivos.size() == secoes);
    // The blank behind ".header.valorativos" keeps this finding from being shown as one of a field.
    std::string texto =
        linhaDoTotal("valorativos", totais.valorativos, tipo, ".header.valorativos ", totais.chave,
                     "O valor dos ativos do header não corresponde à soma dos ativos das seções");
    for (std::size_t i = 0; i < secoes; ++i) {
        const SecaoDeAtivos& secao = secoesDeAtivos.at(i);
        texto += linhaDoTotal(secao.rotulo, totais.somas.at(i), tipo,
                              "." + std::string(secao.tag) + ".valortotal", totais.chave, secao.descricao);
    }
    texto += linhaDoTotal("Total Geral", totais.total, tipo, ".totalgeral.valortotal", totais.chave,
                          "TOTAL GERAL");
    return texto + "</TORVA>\r\n";
}

} // namespace tv
