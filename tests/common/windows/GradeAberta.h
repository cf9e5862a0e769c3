#pragma once

#include "Registros.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace tv::test {

/// A grid on the screen.
class GradeAberta : public testing::Test {
protected:
    void abre(int linhas) {
        dados_ = registros(linhas);
        grade_.modelo().setDados(dados_);
        controleLib::gridInitializeLayout(grade_);
        painel_.resize(700, 400);
        painel_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&painel_));
        grade_.setFocus();
    }
    QPoint lugarDaLinha(int linha) const {
        return grade_.visualRect(grade_.modelo().index(linha, 0)).center();
    }
    void clica(int linha, Qt::KeyboardModifiers teclas = Qt::NoModifier) {
        QTest::mouseClick(grade_.viewport(), Qt::LeftButton, teclas, lugarDaLinha(linha));
    }
    void tecla(int qual, Qt::KeyboardModifiers teclas = Qt::NoModifier) {
        QTest::keyClick(&grade_, static_cast<Qt::Key>(qual), teclas);
    }
    QString nome(int linha) const { return grade_.modelo().texto(linha, "nome"); }
    QColor cor(const QPoint& lugar, const QWidget& onde) const {
        return const_cast<QWidget&>(onde).grab().toImage().pixelColor(lugar); // grab asks for no const
    }
    /// The background at the right end of a row's first cell, where no text stands.
    QColor fundoDaLinha(int linha) {
        const QRect celula = grade_.visualRect(grade_.modelo().index(linha, 3));
        return cor(celula.center(), *grade_.viewport());
    }

    PainelGrade painel_{QStringLiteral("grid")};
    Grade& grade_ = painel_.grade();
    std::shared_ptr<RecordSet> dados_;
};

} // namespace tv::test
