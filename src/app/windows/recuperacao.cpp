#include "app/windows/recuperacao.h"

#include "app/clsTramadorValidador.h"
#include "app/windows/mdiMain.h"
#include "common/PastaDeGuarda.h"
#include "common/TrabalhoGuardado.h"
#include "common/windows/GuardaDaJanela.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "composer/windows/frmTramador.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/text.h"

#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

namespace tv::recuperacao {

namespace {

using mensagem::Icone;

constexpr std::size_t maximoNaPergunta = 8; ///< Works that the question names.

/// A work that was left behind, without its content.
struct Achado {
    std::filesystem::path lugar;
    EtiquetaDeTrabalho etiqueta;
};

std::shared_ptr<const clsBoleto> layoutDe(const EtiquetaDeTrabalho& etiqueta) {
    const auto* boleto =
        objTramadorValidador == nullptr ? nullptr : objTramadorValidador->getBoletos().find(etiqueta.layout);
    return boleto == nullptr ? nullptr : *boleto;
}

TrabalhoGuardado le(const std::filesystem::path& lugar) {
    return arquivoDeTrabalho::le(files::readAll(lugar));
}

/// Damaged files are told in the log and set aside.
std::vector<Achado> leAchados(PastaDeGuarda& pasta, const std::vector<std::filesystem::path>& lugares) {
    std::vector<Achado> achados;
    for (const std::filesystem::path& lugar : lugares) {
        const bool leu = guarded("recuperacao.le", [&] { achados.push_back({lugar, le(lugar)}); });
        if (!leu) {
            guarded("recuperacao.danificado", [&] { pasta.danificado(lugar); });
        }
    }
    return achados;
}

QString descricao(const EtiquetaDeTrabalho& etiqueta) {
    const auto boleto = layoutDe(etiqueta);
    const std::string nome =
        boleto == nullptr ? etiqueta.layout : boleto->getNome() + " (" + boleto->getVersao() + ")";
    const std::string arquivo =
        text::trim(etiqueta.arquivo).empty() ? std::string("documento novo") : etiqueta.arquivo;
    return QStringLiteral("%1 - %2\n%3, guardado em %4")
        .arg(etiqueta.janela == "frmEditor" ? QStringLiteral("Editor de XML") : QStringLiteral("Tramador"),
             paraQt(nome), paraQt(arquivo), paraQt(defaultText(etiqueta.instante)));
}

QString pergunta(const std::vector<Achado>& achados, const PastaDeGuarda& pasta) {
    QStringList partes;
    partes << QStringLiteral("O programa não foi encerrado normalmente, e há trabalho que não foi salvo:");
    for (std::size_t i = 0; i < std::min(achados.size(), maximoNaPergunta); ++i) {
        partes << descricao(achados[i].etiqueta);
    }
    if (achados.size() > maximoNaPergunta) {
        partes << QStringLiteral("e mais %1.").arg(achados.size() - maximoNaPergunta);
    }
    partes << QStringLiteral("Deseja recuperá-lo?")
           << QStringLiteral("Se não, ele ficará por %1 dias na pasta %2.")
                  .arg(PastaDeGuarda::diasDosRecusados)
                  .arg(caminhoQt(pasta.pasta()));
    return partes.join(QStringLiteral("\n\n"));
}

bool abre(frmTramador& janela, const std::shared_ptr<const clsBoleto>& boleto,
          const TrabalhoGuardado& trabalho) {
    return boleto != nullptr && janela.retoma(boleto, trabalho.conteudo);
}

bool abre(frmEditor& janela, const std::shared_ptr<const clsBoleto>& boleto,
          const TrabalhoGuardado& trabalho) {
    return janela.retoma(boleto, paraQt(trabalho.arquivo), trabalho.conteudo);
}

template<typename Tipo>
bool retoma(const TrabalhoGuardado& trabalho, const std::shared_ptr<PastaDeGuarda>& pasta,
            const std::filesystem::path& lugar) {
    Tipo& janela = criaJanela<Tipo>();
    if (!abre(janela, layoutDe(trabalho), trabalho)) {
        if (!janela.descarregada()) {
            janela.closeWindow();
        }
        return false;
    }
    janela.guarda().adota(pasta, lugar);
    mdiMain::instancia().addJanela(janela);
    return true;
}

bool retoma(const Achado& achado, const std::shared_ptr<PastaDeGuarda>& pasta) {
    return guarded("recuperacao.retoma", false, [&] {
        const TrabalhoGuardado trabalho = le(achado.lugar);
        if (trabalho.janela == "frmTramador") {
            return retoma<frmTramador>(trabalho, pasta, achado.lugar);
        }
        return trabalho.janela == "frmEditor" && retoma<frmEditor>(trabalho, pasta, achado.lugar);
    });
}

void retomaTodos(const std::vector<Achado>& achados, const std::shared_ptr<PastaDeGuarda>& pasta) {
    QStringList falhas;
    for (const Achado& achado : achados) {
        if (!retoma(achado, pasta)) {
            falhas << descricao(achado.etiqueta);
            guarded("recuperacao.recusa", [&] { pasta->recusa(achado.lugar); });
        }
    }
    if (!falhas.isEmpty()) {
        mensagem::mostra(QStringLiteral("Não foi possível recuperar:\n\n") +
                             falhas.join(QStringLiteral("\n\n")),
                         Icone::Exclamacao);
    }
}

} // namespace

void oferece() {
    const std::shared_ptr<PastaDeGuarda> pasta = PastaDeGuarda::doPrograma();
    const std::vector<std::filesystem::path> lugares = pasta->assume();
    if (lugares.empty()) {
        return;
    }
    guarded("recuperacao.oferece", [&] {
        const std::vector<Achado> achados = leAchados(*pasta, lugares);
        if (achados.empty()) {
            return;
        }
        if (mensagem::pergunta(pergunta(achados, *pasta), Icone::Pergunta)) {
            retomaTodos(achados, pasta);
            return;
        }
        for (const Achado& achado : achados) {
            guarded("recuperacao.recusa", [&] { pasta->recusa(achado.lugar); });
        }
    });
}

} // namespace tv::recuperacao
