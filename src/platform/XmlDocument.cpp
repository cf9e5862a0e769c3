#include "platform/XmlDocument.h"

#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/XmlDocumentImpl.h"
#include "platform/XmlNodes.h"
#include "platform/text.h"

namespace tv {
namespace {

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n";

xml::Doc newDocument() {
    xml::start();
    return xml::Doc(xmlNewDoc(xml::bytes("1.0")));
}

} // namespace

XmlDocument::XmlDocument()
    : impl_(std::make_unique<Impl>()) {}
XmlDocument::~XmlDocument() = default;
XmlDocument::XmlDocument(XmlDocument&&) noexcept = default;
XmlDocument& XmlDocument::operator=(XmlDocument&&) noexcept = default;

bool XmlDocument::load(const std::filesystem::path& path) {
    impl_->doc.reset();
    try {
        impl_->read(files::readAll(path), nullptr, files::toText(path).c_str());
    } catch (const Error& failure) {
        impl_->parseError = failure.description();
    }
    return !empty();
}

bool XmlDocument::loadXML(std::string_view utf8) {
    impl_->read(utf8, "UTF-8", nullptr);
    return !empty();
}

const std::string& XmlDocument::parseError() const noexcept {
    return impl_->parseError;
}

XmlNode XmlDocument::documentElement() const {
    xmlNode* root = impl_->doc ? xmlDocGetRootElement(impl_->doc.get()) : nullptr;
    if (root == nullptr) {
        throw Error(errc::objectNotSet, "XmlDocument", "O documento está vazio");
    }
    return XmlNode(root);
}

bool XmlDocument::empty() const noexcept {
    return !impl_->doc || xmlDocGetRootElement(impl_->doc.get()) == nullptr;
}

std::vector<XmlNode> XmlDocument::selectNodes(std::string_view xpath) const {
    std::vector<XmlNode> result;
    if (!empty()) {
        for (xmlNode* node : xml::select(impl_->documentNode(), xpath)) {
            result.push_back(XmlNode(node));
        }
    }
    return result;
}

XmlNode XmlDocument::selectSingleNode(std::string_view xpath) const {
    const std::vector<XmlNode> found = selectNodes(xpath);
    return found.empty() ? XmlNode() : found.front();
}

XmlDocument XmlDocument::create(std::string_view rootName) {
    XmlDocument document;
    document.impl_->doc = newDocument();
    xmlDocSetRootElement(document.impl_->doc.get(), xml::newElement(document.impl_->doc.get(), rootName));
    return document;
}

XmlNode XmlDocument::createElement(std::string_view name) {
    if (!impl_->doc) {
        impl_->doc = newDocument();
    }
    xmlNode* element = xml::newElement(impl_->doc.get(), name);
    xml::dataOf(impl_->doc.get()).detached.insert(element);
    return XmlNode(element);
}

std::string XmlDocument::xml() const {
    std::string out;
    if (impl_->doc) {
        xml::write(out, impl_->doc.get(), false);
    }
    return out;
}

void XmlDocument::save(const std::filesystem::path& path, bool indent) const {
    files::replaceWhole(path, toLatin1(indent));
}

std::string XmlDocument::toLatin1(bool indent) const {
    std::string out(declaration);
    if (impl_->doc) {
        xml::write(out, impl_->doc.get(), indent);
    }
    return text::toLatin1Markup(out);
}

} // namespace tv
