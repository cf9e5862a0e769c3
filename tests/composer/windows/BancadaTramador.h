#pragma once

#include "app/clsTramadorValidador.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/mdiMain.h"
#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/Layouts.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/VistaFundos.h"
#include "composer/windows/frmTramador.h"
#include "windows/Caixas.h"
#include "windows/Janelas.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tv::test {

inline QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

inline constexpr const char* cnpj = "94000001000180";
inline constexpr const char* outroCnpj = "94000031000196";

/// The main window with the shipped catalog in an application folder of its own, and one composer.
class BancadaTramador : public ::testing::Test {
protected:
    BancadaTramador() {
        programa.catalogoDistribuido();
        objTramadorValidador = std::make_shared<clsTramadorValidador>();
        EXPECT_TRUE(objTramadorValidador->load(programa.caminho().string(), "TORVA_TramadorValidador.xml"))
            << objTramadorValidador->lastReason();
        mdiMain::instancia().resize(1200, 760);
        mdiMain::instancia().show();
        mdiMain::instancia().activateWindow();
        espera([] { return mdiMain::instancia().isActiveWindow(); });
    }

    /// Opens a composer for a layout of the catalog.
    frmTramador& abre(const char* layout) { return abre(objTramadorValidador->getBoletos().Item(layout)); }
    frmTramador& abre(const std::shared_ptr<const clsBoleto>& layout) {
        mdiMain::instancia().abrirTramador(layout);
        janela = dynamic_cast<frmTramador*>(mdiMain::instancia().janelaAtiva());
        if (janela == nullptr) {
            throw std::runtime_error("the window is not there");
        }
        return *janela;
    }

    Documento& documento() const { return janela->documento(); }
    EstadoDocumento& estado() const { return documento().estado; }
    GradeSecao& secao() const { return documento().getGrid(); }
    Grade& grade() const { return janela->gradeAtual(); }
    ModeloGrade& modelo() const { return grade().modelo(); }
    VistaFundos& arvore() const { return *janela->findChild<VistaFundos*>(q("treeFundos")); }
    QToolBar& barra() const { return *janela->findChild<QToolBar*>(q("toolbar")); }
    QString painel(int qual) const {
        return janela->findChild<QLabel*>(QStringLiteral("panel%1").arg(qual))->text();
    }
    QAction* acao(const char* chave) const { return acaoDa(barra(), chave); }
    void clica(const char* chave) const { clicaNa(barra(), chave); }
    /// Clicks a node of the tree by its texts from the root on.
    void clicaNo(const std::vector<const char*>& textos) const {
        QTreeWidgetItem* item = arvore().invisibleRootItem();
        for (const char* texto : textos) {
            item = filho(*item, texto);
            ASSERT_NE(item, nullptr) << texto;
            if (item->parent() != nullptr) {
                item->parent()->setExpanded(true);
            }
        }
        arvore().scrollToItem(item);
        QTest::mouseClick(arvore().viewport(), Qt::LeftButton, {}, arvore().visualItemRect(item).center());
    }
    static QTreeWidgetItem* filho(const QTreeWidgetItem& pai, const char* texto) {
        for (int i = 0; i < pai.childCount(); ++i) {
            if (pai.child(i)->text(0) == q(texto)) {
                return pai.child(i);
            }
        }
        return nullptr;
    }

    /// Makes a cell current, by the tag of its field.
    void vaiPara(int linha, std::string_view coluna) const {
        grade().setFocus();
        grade().setCurrentIndex(modelo().index(linha, modelo().indice(coluna)));
    }
    /// Types into the current cell, letter by letter, and ends with a key.
    void digita(const char* texto, int fim = Qt::Key_Tab) const {
        for (const char* letra = texto; *letra != '\0'; ++letra) {
            QTest::keyClick(focoDaGrade(), *letra);
        }
        QTest::keyClick(focoDaGrade(), static_cast<Qt::Key>(fim));
    }
    /// The open editor, otherwise the grid.
    QWidget* focoDaGrade() const {
        for (QLineEdit* editor : grade().findChildren<QLineEdit*>()) {
            if (editor->isVisible()) {
                return editor;
            }
        }
        return &grade();
    }
    QComboBox* lista() const {
        for (QComboBox* editor : grade().findChildren<QComboBox*>()) {
            if (editor->isVisible()) {
                return editor;
            }
        }
        return nullptr;
    }
    /// Sets a cell without the keyboard, as a step to what a test is about.
    void preenche(int linha, std::string_view coluna, Value valor) const {
        modelo().setValor(linha, coluna, std::move(valor));
    }
    std::string texto(int linha, std::string_view coluna) const {
        return paraUtf8(modelo().texto(linha, coluna));
    }
    std::string visivel(int linha, std::string_view coluna) const {
        return paraUtf8(modelo().textoVisivel(linha, modelo().indice(coluna)));
    }
    /// Fills every mandatory field of a row with something that its rule takes.
    void completa(int linha) const {
        for (const auto& campo : secao().secao->getCampos()) {
            if (!campo->isValido(texto(linha, campo->getTag()))) {
                preenche(linha, campo->getTag(), valorBom(*campo));
            }
        }
    }
    static Value valorBom(const clsCampo& campo) {
        if (campo.hasTabela()) {
            return campo.getTabela()->Item(1).key;
        }
        switch (campo.getDado().getTipo()) {
        case 3:
            return 1;
        case 5:
            return 1.0;
        case 11:
            return true;
        case 133:
            return clock::at(2024, 1, 15);
        default:
            return std::string(campo.getDado().getValidacao() == "CNPJ" ? cnpj : "1");
        }
    }
    /// A fund with this number, added and ended as the user does it.
    void incluiFundo(const char* numero) const {
        clica("btnAdicionar");
        const int linha = grade().linhaAtiva();
        ASSERT_GE(linha, 0);
        const std::string chave =
            secao().secao->getCampoChave() ? secao().secao->getCampoChave()->getTag() : "cnpj";
        preenche(linha, chave, std::string(numero));
        completa(linha);
        QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    }

    PastaDoPrograma programa;
    QPointer<frmTramador> janela;
};

} // namespace tv::test
