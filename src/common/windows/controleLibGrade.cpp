#include "app/Aplicacao.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"

#include <QFont>

namespace tv::controleLib {

namespace {

void textosDaGrade(Grade& grade) {
    const QString titulo = paraQt(aplicacao::titulo());
    const std::vector<std::pair<Grade::Texto, QString>> textos{
        {Grade::tituloRemocao, titulo},
        {Grade::tituloAviso, titulo},
        {Grade::tituloErro, titulo},
        {Grade::removeUma, Grade::perguntaComum(Grade::removeUma)},
        {Grade::removeVarias, Grade::perguntaComum(Grade::removeVarias)},
        {Grade::valorInvalido, QStringLiteral("Valor inválido!")},
        {Grade::dataInvalida, QStringLiteral("Data inválida!")},
        {Grade::selecaoInvalida, QStringLiteral("Seleção Inválida!")},
        {Grade::fechar, QStringLiteral("Fechar")},
        {Grade::imprimir, QStringLiteral("Imprimir")},
        {Grade::configurar, QStringLiteral("Configurar")},
        {Grade::itensExcedidos, QStringLiteral("Número de ítens excedido!")},
    };
    for (const auto& [numero, texto] : textos) {
        grade.setTexto(numero, texto);
    }
}

/// The hint chooses a like font where the named one is not installed.
QFont fonte(const QString& familia, QFont::StyleHint parente, int pontos, QFont::Weight peso) {
    QFont nova(familia, pontos, peso);
    nova.setStyleHint(parente);
    return nova;
}

AparenciaGrade aparenciaComum() {
    return {fonte(QStringLiteral("Verdana"), QFont::SansSerif, 9, QFont::Bold),
            fonte(QStringLiteral("Arial"), QFont::SansSerif, 10, QFont::Normal),
            QColor(255, 255, 200),
            QColor(166, 202, 240),
            QColor(240, 240, 240),
            QColor(255, 255, 255)};
}

QString perguntaDeRemocao(std::size_t selecionadas) {
    if (selecionadas == 1) {
        return QStringLiteral("Existe uma linha selecionada para remoção.\nDeseja continuar?");
    }
    return QStringLiteral("Existem %1 linhas selecionadas para remoção.\nDeseja continuar?")
        .arg(selecionadas);
}

} // namespace

void gridInitializeLayout(Grade& grade) {
    guarded("controleLib.gridInitializeLayout", [&] {
        textosDaGrade(grade);
        grade.setFonteCaption(fonte(QStringLiteral("Times New Roman"), QFont::Serif, 14, QFont::Bold));
        if (grade.modelo().dados()) {
            grade.setAparencia(aparenciaComum());
        }
    });
}

void removeRow(Grade& grade) {
    guarded("controleLib.removeRow", [&] {
        if (grade.modelo().rowCount() == 0) {
            return;
        }
        if (grade.linhasSelecionadas().empty()) {
            if (grade.linhaAtiva() < 0) {
                mensagem::mostra(QStringLiteral("Não foi possível remover.\nNenhuma linha selecionada!"),
                                 mensagem::Icone::Exclamacao);
                return;
            }
            grade.selecionaLinha(grade.linhaAtiva());
        }
        const QString pergunta = perguntaDeRemocao(grade.linhasSelecionadas().size());
        grade.setTexto(Grade::removeVarias, pergunta);
        grade.removeSelecionadas(pergunta);
    });
}

} // namespace tv::controleLib
