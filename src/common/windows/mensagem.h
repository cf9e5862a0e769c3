#pragma once

#include <QString>

/// The program's message boxes. Every message goes through here: a modal box with text, icon, buttons and
/// title; the title is the application's title unless one is given. Buttons read "OK", "Sim" and "Não".
namespace tv::mensagem {

enum class Icone { Nenhum, Informacao, Exclamacao, Critico, Pergunta };

/// Shows a text with the button OK and waits for it; below the text, in smaller letters, an explanation where
/// there is one.
void mostra(const QString& texto, Icone icone = Icone::Nenhum, const QString& titulo = {},
            const QString& explicacao = {});

/// Asks with the buttons Sim and Não; true for Sim. Closing the box or Esc counts as Não.
bool pergunta(const QString& texto, Icone icone = Icone::Nenhum, const QString& titulo = {});

/// The same, kept in front of all windows of the desktop.
bool perguntaAcimaDeTudo(const QString& texto, Icone icone, const QString& titulo = {});

} // namespace tv::mensagem
