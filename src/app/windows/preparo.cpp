#include "app/windows/preparo.h"

#include "app/PreparoDaPasta.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"

#include <QStringList>

#include <algorithm>

namespace tv::preparo {

namespace {

constexpr std::size_t nomesMostrados = 10;

QString lista(const std::vector<std::string>& nomes) {
    QStringList linhas;
    for (std::size_t i = 0; i < std::min(nomes.size(), nomesMostrados); ++i) {
        linhas.append(QStringLiteral("    ") + paraQt(nomes[i]));
    }
    if (nomes.size() > nomesMostrados) {
        linhas.append(QStringLiteral("    e mais %1").arg(nomes.size() - nomesMostrados));
    }
    return linhas.join(QLatin1Char('\n'));
}

bool querOsNovos(const std::vector<std::string>& nomes) {
    return mensagem::pergunta(
        QStringLiteral("A nova versão do programa traz arquivos que você alterou:\n\n") + lista(nomes) +
            QStringLiteral(
                "\n\nDeseja usar os novos?\n"
                "Com Sim, os seus ficam ao lado, com \".anterior\" e a data no nome.\n"
                "Com Não, os seus continuam valendo e os novos ficam ao lado, com \".novo\" no nome."),
        mensagem::Icone::Pergunta);
}

/// The offers that are open, be it that another start has made them.
void decideOfertas(const pastaDaAplicacao::Preparada& preparada) {
    if (preparada.distribuicao.empty()) {
        return;
    }
    PreparoDaPasta preparo(preparada.distribuicao, preparada.pasta);
    const std::vector<std::string> nomes = preparo.ofertas();
    if (nomes.empty()) {
        return;
    }
    if (querOsNovos(nomes)) {
        preparo.aceita();
    } else {
        preparo.recusa();
    }
}

void avisa(const char* texto, const std::string& motivo, mensagem::Icone icone) {
    mensagem::mostra(QString::fromUtf8(texto), icone, {}, paraQt(motivo));
}

} // namespace

bool pasta(const pastaDaAplicacao::Lugares& lugares) {
    pastaDaAplicacao::Preparada preparada;
    try {
        preparada = pastaDaAplicacao::prepara(lugares);
    } catch (const std::exception& falha) {
        avisa("O programa não tem uma pasta onde trabalhar.", falha.what(), mensagem::Icone::Critico);
        return false;
    }
    if (!preparada.aviso.empty()) {
        avisa("A atualização dos arquivos do programa não foi feita. Continuam valendo os anteriores.",
              preparada.aviso, mensagem::Icone::Exclamacao);
    }
    try {
        decideOfertas(preparada);
    } catch (const std::exception& falha) {
        avisa("Os novos arquivos não puderam tomar o lugar dos seus.", falha.what(),
              mensagem::Icone::Exclamacao);
    }
    return true;
}

bool pastaDoProcesso() {
    return pasta(pastaDaAplicacao::lugares());
}

} // namespace tv::preparo
