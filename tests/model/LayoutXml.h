#pragma once

#include "model/clsTabela.h"

#include <memory>
#include <string>
#include <string_view>

namespace tv::test {

/// A CAMPO element of a catalog. Members are the attributes; a test names those that it is about.
struct CampoXml {
    std::string tag = "cod";
    std::string campoChave = "NAO";
    std::string observacao = "Um campo";
    std::string tipo = "TEXTO";
    std::string tamanho = "10";
    std::string mandatorio = "N";
    std::string validacao{};
    std::string valorDefault{};
    std::string titulo = "Código";
    std::string largura = "1500";
    std::string alinhamento = "ESQUERDA";
    std::string maskInput{};
    std::string maskDisplay{};
    std::string maskOutput{};
    std::string tabela{};

    std::string dado() const {
        return "<DADO tipo='" + tipo + "' tamanho='" + tamanho + "' mandatorio='" + mandatorio +
               "' validacao='" + validacao + "' default='" + valorDefault + "'/>";
    }
    std::string coluna() const {
        return "<COLUNA titulo='" + titulo + "' largura='" + largura + "' alinhamento='" + alinhamento +
               "' maskInput='" + maskInput + "' maskDisplay='" + maskDisplay + "' maskOutput='" + maskOutput +
               "' tabela='" + tabela + "'/>";
    }
    std::string xml() const {
        return "<CAMPO tag='" + tag + "' campoChave='" + campoChave + "'><OBSERVACAO>" + observacao +
               "</OBSERVACAO>" + dado() + coluna() + "</CAMPO>";
    }
};

/// A SECAO element with `inside` below it.
struct SecaoXml {
    std::string tag = "fundo";
    std::string inside{};
    std::string nome = "Fundo";
    std::string ocorrencia = "N";
    std::string secaoMestre = "NAO";
    std::string nomeGrupo{};
    std::string tagGrupo{};

    std::string xml() const {
        return "<SECAO nome='" + nome + "' tag='" + tag + "' ocorrencia='" + ocorrencia + "' secaoMestre='" +
               secaoMestre + "' nomeGrupo='" + nomeGrupo + "' tagGrupo='" + tagGrupo + "'>" + inside +
               "</SECAO>";
    }
};

/// A BOLETO element with `inside` below it.
struct BoletoXml {
    std::string tag = "posicao";
    std::string inside{};
    std::string nome = "Posição";
    std::string versao = "1.0";
    std::string validador{};
    std::string formula{};
    std::string tramador = "SIM";
    std::string nomeGrupo{};
    std::string tagGrupo{};

    std::string xml() const {
        return "<BOLETO nome='" + nome + "' versao='" + versao + "' tag='" + tag + "' validador='" +
               validador + "' formula='" + formula + "' tramador='" + tramador + "' nomeGrupo='" + nomeGrupo +
               "' tagGrupo='" + tagGrupo + "'>" + inside + "</BOLETO>";
    }
};

/// `xml` without its attribute `name`.
inline std::string without(const std::string& xml, std::string_view name) {
    const std::size_t start = xml.find(" " + std::string(name) + "='");
    const std::size_t end = xml.find('\'', xml.find('\'', start) + 1);
    return xml.substr(0, start) + xml.substr(end + 1);
}

/// The tables of a catalog with one table "titulos" that holds "LFT", "0001" and "20240115".
inline std::shared_ptr<const Tabelas> tables() {
    auto titulos = std::make_shared<clsTabela>();
    titulos->key = "titulos";
    for (const char* key : {"LFT", "0001", "20240115"}) {
        titulos->linha.Add({key, std::string("Texto de ") + key}, key);
    }
    auto all = std::make_shared<Tabelas>();
    all->Add(titulos, titulos->key);
    return all;
}

} // namespace tv::test
