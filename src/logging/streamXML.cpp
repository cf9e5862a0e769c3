#include "logging/streamXML.h"

#include "logging/Routine.h"
#include "logging/clsLogger.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/format.h"
#include "platform/text.h"

namespace tv {
namespace {

std::string timeNow() {
    return format::format(clock::now(), "HH:MM:SS");
}

/// The element name that stands for a name of the call stack. What is no legal element name is found out
/// later, by the path or by the element.
std::string mapearTag(std::string_view name) {
    std::string tag;
    for (const char c : name) {
        if (c == '(' || c == ',') {
            tag += '_';
        } else if (c != ')') {
            tag += c;
        }
    }
    return tag;
}

/// Throws Error 5 for a name with a prefix: the file declares none, and with one it would not load again.
void requireNoPrefix(const std::string& tag) {
    if (text::contains(tag, ":")) {
        throw Error(errc::invalidCall, "streamXML", "O nome tem um prefixo: " + tag);
    }
}

/// The last of the nodes under `path`. Throws Error 91 when there is none.
XmlNode lastNode(const XmlDocument& document, const std::string& path) {
    const std::vector<XmlNode> nodes = document.documentElement().selectNodes(path);
    if (nodes.empty()) {
        throw Error(errc::objectNotSet, "streamXML", "Nenhum elemento em " + path);
    }
    return nodes.back();
}

void stamp(XmlNode element, const std::string& time) {
    element.setAttribute("ini", time);
    element.setAttribute("fim", time);
}

} // namespace

/// Loads the log file, lets `apply` change it and saves it. A file that does not load stays as it is; a
/// failure of any step ends the operation.
template<typename Change>
void streamXML::change(Change&& apply) const {
    const std::string& filename = oLogger_->getFilename();
    XmlDocument document;
    if (document.load(filename)) {
        apply(document);
        files::writeAll(filename, document.toLatin1());
    }
}

void streamXML::startLogging() {
    proceed([this] {
        oLogger_->getFilename();
        if (oLogger_->getLevel() > library::level::off) {
            change([](XmlDocument& document) {
                stamp(document.documentElement().appendElement("EXEC"), timeNow());
            });
        }
    });
}

void streamXML::finishLogging() {
    proceed([this] {
        oLogger_->getFilename();
        if (oLogger_->getLevel() <= library::level::off) {
            return;
        }
        oLogger_->callStack.popAll();
        change([](XmlDocument& document) {
            const std::vector<XmlNode> runs = document.documentElement().childElements();
            if (!runs.empty()) {
                XmlNode run = runs.back();
                run.setAttribute("fim", timeNow());
            }
        });
    });
}

void streamXML::logPUSH() {
    proceed([this] {
        if (oLogger_->getLevel() > library::level::off) {
            log(library::levelNames.at(library::stackName), "");
        }
    });
}

void streamXML::logPOP() {
    proceed([this] {
        oLogger_->getFilename();
        if (oLogger_->getLevel() <= library::level::off) {
            return;
        }
        change([this](XmlDocument& document) {
            lastNode(document, pathOfStack(oLogger_->callStack.lenght())).setAttribute("fim", timeNow());
        });
    });
}

void streamXML::log(std::string_view level, std::string_view description) {
    proceed([&] {
        change([&](XmlDocument& document) {
            const clsStack& stack = oLogger_->callStack;
            const std::string tag = mapearTag(stack.getLastElement());
            requireNoPrefix(tag);
            XmlNode parent = lastNode(document, pathOfStack(stack.lenght() - 1));
            XmlNode entry = document.createElement(tag);
            stamp(entry, timeNow());
            if (text::upper(level) != library::levelNames.at(library::stackName)) {
                entry.setAttribute(text::lower(level), description);
            }
            parent.appendChild(entry);
        });
    });
}

void streamXML::openFile(const std::string& filename, std::string_view title, std::string_view version) {
    proceed([&] {
        if (files::exists(filename)) {
            return;
        }
        std::string content = "<?xml version='1.0' encoding='ISO-8859-1' ?>\r\n"
                              "<!-- KVOLogger version: 1.0.0 -->\r\n"
                              "<LOG app='";
        content += text::trim(title);
        content += "' version='";
        content += text::trim(version);
        content += "'>\r\n</LOG>\r\n";
        files::append(filename, text::toLatin1(content));
    });
}

void streamXML::closeFile(const std::string& /*filename*/) {}

std::string streamXML::getFileExtension() const {
    return "xml";
}

/// Path of the element that stands for the first `depth` names of the call stack.
std::string streamXML::pathOfStack(std::int32_t depth) const {
    std::string path = "//LOG/EXEC";
    for (std::int32_t i = 1; i <= depth; ++i) {
        path += "/" + mapearTag(oLogger_->callStack.getElement(i));
    }
    return path;
}

} // namespace tv
