#include "editor/windows/WindowsMessage.h"

#include "editor/windows/JanelaComTexto.h"
#include "logging/LogFolder.h"
#include "logging/Routine.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::ativa;
using test::JanelaComTexto;
using test::OutraJanela;

/// The replacement procedure over one that records what reaches it and answers 77.
struct WindowsMessageTest : ::testing::Test {
    ~WindowsMessageTest() override { mdiMain::destroi(); }
    std::size_t registrado(std::string_view texto) const {
        return test::occurrences(pasta.read("log20240305.txt"), texto);
    }

    test::TemporaryFolder pasta;
    clock::Frozen agora{clock::at(2024, 3, 5, 14, 7, 9)};
    test::GlobalLogger global{test::startLogger(pasta, clsLogger::typeTXT, library::level::all)};
    std::vector<MensagemDeJanela> passadas;
    WindowsMessage procedimento{[this](const MensagemDeJanela& mensagem) {
        passadas.push_back(mensagem);
        return std::intptr_t{77};
    }};
};

TEST_F(WindowsMessageTest, EveryMessageGoesOnAsItIsAndThePreviousAnswerComesBack) {
    for (const std::uint32_t numero : {0x0FU, 0x111U, 0x115U, 0x11FU, 0x0U, 0xFFFFU}) {
        passadas.clear();
        EXPECT_EQ(procedimento.trata({12, numero, 34, -56}), 77);
        ASSERT_EQ(passadas.size(), 1U);
        EXPECT_EQ(passadas[0].janela, 12U);
        EXPECT_EQ(passadas[0].numero, numero);
        EXPECT_EQ(passadas[0].wParam, 34U);
        EXPECT_EQ(passadas[0].lParam, -56);
    }
}

TEST_F(WindowsMessageTest, WithoutAPreviousProcedureTheAnswerIs0) {
    WindowsMessage sozinho(nullptr);
    EXPECT_EQ(sozinho.trata({0, 0x111, 0, 0}), 0);
}

TEST_F(WindowsMessageTest, AMenuSelectionIsLogged) {
    const Routine rotina("teste");
    procedimento.trata({0, 0x11F, 0, 0});
    EXPECT_EQ(registrado("Check for a menu selection message"), 1U) << pasta.read("log20240305.txt");
    EXPECT_EQ(registrado("FATAL"), 1U);
    procedimento.trata({0, 0x111, 0, 0});
    EXPECT_EQ(registrado("FATAL"), 1U);
}

TEST_F(WindowsMessageTest, AMenuSelectionWithoutALoggerGoesOn) {
    const test::GlobalLogger nenhum(nullptr);
    EXPECT_EQ(procedimento.trata({0, 0x11F, 0, 0}), 77);
}

TEST_F(WindowsMessageTest, AVerticalScrollDrawsTheStripOfTheActiveChild) {
    auto& editor = ativa<JanelaComTexto>(QStringLiteral("a\nb\nc"));
    const QImage emBranco = editor.picLines->grab().toImage();
    EXPECT_EQ(procedimento.trata({0, 0x115, 0, 0}), 77);
    EXPECT_NE(editor.picLines->grab().toImage(), emBranco);
}

TEST_F(WindowsMessageTest, WithTheFlagSetNothingIsDrawn) {
    auto& editor = ativa<JanelaComTexto>(QStringLiteral("a\nb\nc"));
    const QImage emBranco = editor.picLines->grab().toImage();
    procedimento.semDesenho = 1;
    EXPECT_EQ(procedimento.trata({0, 0x115, 0, 0}), 77);
    EXPECT_EQ(editor.picLines->grab().toImage(), emBranco);
}

TEST_F(WindowsMessageTest, OtherMessagesDrawNothing) {
    auto& editor = ativa<JanelaComTexto>(QStringLiteral("a\nb\nc"));
    const QImage emBranco = editor.picLines->grab().toImage();
    procedimento.trata({0, 0x114, 0, 0});
    procedimento.trata({0, 0x11F, 0, 0});
    EXPECT_EQ(editor.picLines->grab().toImage(), emBranco);
}

TEST_F(WindowsMessageTest, AVerticalScrollOverAChildWithoutAStripIsPassedOverAndGoesOn) {
    ativa<OutraJanela>();
    EXPECT_EQ(procedimento.trata({0, 0x115, 0, 0}), 77);
    EXPECT_EQ(passadas.size(), 1U);
    EXPECT_EQ(registrado("FATAL"), 0U) << pasta.read("log20240305.txt");
}

TEST_F(WindowsMessageTest, AVerticalScrollWithoutAChildIsPassedOverAndGoesOn) {
    EXPECT_EQ(procedimento.trata({0, 0x115, 0, 0}), 77);
    EXPECT_EQ(passadas.size(), 1U);
}

} // namespace
} // namespace tv
