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

/// Gives an entry's element its attributes; without a level it is a routine's own.
void fill(XmlNode entry, std::string_view level, std::string_view description) {
    stamp(entry, timeNow());
    if (!level.empty()) {
        entry.setAttribute(level, description);
    }
}

/// The element of an entry as it stands in the file. Throws Error 5 for a name that is no legal one.
std::string entryBytes(const std::string& tag, std::string_view level, std::string_view description) {
    XmlDocument alone = XmlDocument::create(tag);
    const XmlNode entry = alone.documentElement();
    fill(entry, level, description);
    return text::toLatin1Markup(entry.outerXml());
}

std::string pathOf(const std::vector<std::string>& tags) {
    std::string path = "//LOG/EXEC";
    for (const std::string& tag : tags) {
        path += "/" + tag;
    }
    return path;
}

/// The levels above the routines: LOG and EXEC.
constexpr std::size_t levelsAbove = 2;

} // namespace

/// Loads the log file, lets `apply` change it and saves it. A file that does not load stays as it is; a
/// failure of any step ends the operation. Tells whether the file was changed.
template<typename Change>
bool streamXML::change(Change&& apply) {
    branch_.esquece();
    const std::string& filename = oLogger_->getFilename();
    XmlDocument document;
    if (!document.load(filename)) {
        return false;
    }
    apply(document);
    const std::string bytes = document.toLatin1();
    files::replaceWhole(filename, bytes, files::Flush::no);
    branch_.le(document, bytes, filename);
    return true;
}

void streamXML::startLogging() {
    proceed([this] {
        oLogger_->getFilename();
        if (oLogger_->getLevel() > library::level::off) {
            lacksRun_ = true; // until it is there
            lacksRun_ = !change([](XmlDocument& document) {
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
        const std::string& filename = oLogger_->getFilename();
        if (oLogger_->getLevel() <= library::level::off) {
            return;
        }
        const std::vector<std::string> tags = tagsOfStack(oLogger_->callStack.lenght());
        if (branch_.vale(filename)) {
            const bool isOnBranch =
                branch_.passaPor(0, {"LOG", "EXEC"}) && branch_.passaPor(levelsAbove, tags);
            if (leadsNowhere(tags) ||
                (isOnBranch && branch_.marcaFim(levelsAbove + tags.size() - 1, timeNow()))) {
                return;
            }
        }
        change(
            [&](XmlDocument& document) { lastNode(document, pathOf(tags)).setAttribute("fim", timeNow()); });
    });
}

void streamXML::log(std::string_view level, std::string_view description) {
    proceed([&] {
        if (lacksRun_) {
            startLogging();
        }
        const clsStack& stack = oLogger_->callStack;
        const std::string tag = mapearTag(stack.getLastElement());
        requireNoPrefix(tag);
        const bool isEntry = text::upper(level) != library::levelNames.at(library::stackName);
        append(tagsOfStack(stack.lenght() - 1), tag, isEntry ? text::lower(level) : std::string(),
               description);
    });
}

void streamXML::append(const std::vector<std::string>& parents, const std::string& tag,
                       std::string_view level, std::string_view description) {
    const std::string& filename = oLogger_->getFilename();
    if (branch_.vale(filename)) {
        if (leadsNowhere(parents)) {
            return;
        }
        if (branch_.passaPor(0, {"LOG", "EXEC"}) && branch_.passaPor(levelsAbove, parents)) {
            branch_.acrescenta(levelsAbove + parents.size() - 1, tag, entryBytes(tag, level, description));
            return;
        }
    }
    change([&](XmlDocument& document) {
        XmlNode parent = lastNode(document, pathOf(parents));
        const XmlNode entry = document.createElement(tag);
        fill(entry, level, description);
        parent.appendChild(entry);
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
        files::create(filename, text::toLatin1(content));
    });
}

void streamXML::closeFile(const std::string& /*filename*/) {}

std::string streamXML::getFileExtension() const {
    return "xml";
}

std::vector<std::string> streamXML::tagsOfStack(std::int32_t depth) const {
    std::vector<std::string> tags;
    for (std::int32_t i = 1; i <= depth; ++i) {
        tags.push_back(mapearTag(oLogger_->callStack.getElement(i)));
    }
    return tags;
}

bool streamXML::leadsNowhere(const std::vector<std::string>& tags) const {
    // The name of a file among the arguments makes the tag several steps of the path. Whatever else but names
    // an expression may hold is left to it.
    const auto isStep = [](std::string_view step) {
        return step.find_first_of(":*|[]()@$\"'+=!<>,\\") == std::string_view::npos && step != "." &&
               step != "..";
    };
    bool isMissing = false;
    for (const std::string& tag : tags) {
        for (const std::string_view step : text::split(tag, '/')) {
            if (!isStep(step)) {
                return false;
            }
            isMissing = isMissing || text::contains(step, " ") ||
                        (!step.empty() && !branch_.temNome(std::string(step)));
        }
    }
    return isMissing;
}

} // namespace tv
