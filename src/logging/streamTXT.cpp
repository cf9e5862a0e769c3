#include "logging/streamTXT.h"

#include "logging/Routine.h"
#include "logging/clsLogger.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/format.h"
#include "platform/text.h"

namespace tv {
namespace {

constexpr std::string_view lineEnd = "\r\n";
/// Column at which an entry's message begins, and width of the values in the header's box.
constexpr std::size_t messageColumn = 70;
constexpr std::size_t levelWidth = 6;

std::string timeNow() {
    return format::format(clock::now(), "HH:MM:SS");
}

/// Blanks that make a text of `length` characters `width` wide. Throws Error 5 when it is wider already.
std::string blanksUpTo(std::size_t width, std::size_t length) {
    if (length > width) {
        throw Error(errc::invalidCall, "streamTXT", "Texto além da coluna " + std::to_string(width));
    }
    return std::string(width - length, ' ');
}

/// `value` trimmed, cut to the width of the header's box and filled up to it.
std::string boxValue(std::string_view value) {
    const std::string_view cut = text::left(text::trim(value), messageColumn);
    return std::string(cut) + blanksUpTo(messageColumn, text::length(cut));
}

std::string header(std::string_view title, std::string_view version) {
    const std::string edge = std::string(90, 'X');
    std::string box = edge;
    box += lineEnd;
    // This line is wider than its box; readers of old logs know the file by it.
    box += "X KVO Logger:  " + boxValue("1.0.0") + std::string(59, ' ') + "X";
    box += lineEnd;
    box += "X--------------" + std::string(messageColumn, '-') + "----X";
    box += lineEnd;
    box += "X Application: " + boxValue(title) + "    X";
    box += lineEnd;
    box += "X Version:     " + boxValue(version) + "    X";
    box += lineEnd;
    box += edge;
    box += lineEnd;
    return box;
}

} // namespace

void streamTXT::startLogging() {
    proceed([this] {
        if (oLogger_->getLevel() <= library::level::off) {
            return;
        }
        write("\r\n\r\n"
              "/-------------------------------\\\r\n"
              "| Início de Execução: " +
              timeNow() +
              "  |\r\n"
              "\\-------------------------------/\r\n");
    });
}

void streamTXT::finishLogging() {
    proceed([this] {
        if (oLogger_->getLevel() <= library::level::off) {
            return;
        }
        oLogger_->callStack.popAll();
        write("/--------------------------------\\\r\n"
              "| Término de Execução: " +
              timeNow() +
              "  |\r\n"
              "\\--------------------------------/\r\n"
              "\r\n\r\n");
    });
}

void streamTXT::logPUSH() {
    proceed([this] {
        if (oLogger_->getLevel() > library::level::off) {
            log(library::levelNames.at(library::stackName), "");
        }
    });
}

void streamTXT::logPOP() {
    proceed([this] {
        if (oLogger_->getLevel() > library::level::off) {
            write(timeNow() + " - END    " + indentedTop() + "\r\n");
        }
    });
}

void streamTXT::log(std::string_view level, std::string_view description) {
    proceed([&] {
        const std::string grade = text::upper(level);
        std::string line =
            timeNow() + " - " + grade + blanksUpTo(levelWidth, text::length(grade)) + " " + indentedTop();
        if (grade != library::levelNames.at(library::stackName)) {
            line += blanksUpTo(messageColumn, text::length(line));
            line += " -> [" + std::string(description) + "]";
        }
        line += lineEnd;
        write(line);
    });
}

/// A file whose header could not be written gets it with its first entry.
void streamTXT::write(const std::string& text) {
    const std::string& filename = oLogger_->getFilename();
    if (oLogger_->hasFile()) {
        files::append(filename, text);
    } else {
        files::create(filename, header(oLogger_->appTitle(), oLogger_->appVersion()) + text);
    }
}

void streamTXT::openFile(const std::string& filename, std::string_view title, std::string_view version) {
    proceed([&] {
        if (!files::exists(filename)) {
            files::create(filename, header(title, version));
        }
    });
}

void streamTXT::closeFile(const std::string& /*filename*/) {}

std::string streamTXT::getFileExtension() const {
    return "txt";
}

/// The top name behind one tab for each name below it. Throws Error -1 when the stack is empty.
std::string streamTXT::indentedTop() const {
    const std::string& top = oLogger_->callStack.getLastElement();
    return std::string(static_cast<std::size_t>(oLogger_->callStack.lenght() - 1), '\t') + top;
}

} // namespace tv
