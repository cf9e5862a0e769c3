#include "platform/XmlTransform.h"

#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/TransformGuard.h"
#include "platform/XmlDocumentImpl.h"

#include <libxml/xmlsave.h>
#include <libxslt/imports.h>
#include <libxslt/transform.h>
#include <libxslt/xsltutils.h>

#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>

namespace tv {
namespace {

struct FreeStylesheet {
    void operator()(xsltStylesheet* stylesheet) const noexcept { xsltFreeStylesheet(stylesheet); }
};
using Stylesheet = std::unique_ptr<xsltStylesheet, FreeStylesheet>;

struct FreeTransform {
    void operator()(xsltTransformContext* context) const noexcept { xsltFreeTransformContext(context); }
};
using Transform = std::unique_ptr<xsltTransformContext, FreeTransform>;

struct FreeTree {
    void operator()(xmlDoc* doc) const noexcept { xmlFreeDoc(doc); }
};
using Tree = std::unique_ptr<xmlDoc, FreeTree>;

/// For its life, empty elements are written with both their tags.
class BothTags {
public:
    BothTags()
        : before_(std::exchange(xmlSaveNoEmptyTags, 1)) {}
    ~BothTags() { xmlSaveNoEmptyTags = before_; }
    BothTags(const BothTags&) = delete;
    BothTags& operator=(const BothTags&) = delete;

private:
    int before_;
};

/// The output text; it refuses what goes beyond its bound, which ends the writing.
struct Output {
    std::string text;
    bool outOfMemory = false; ///< No exception may pass through the library, so it is thrown behind it.

    static int write(void* data, const char* bytes, int count) noexcept {
        auto& out = *static_cast<Output*>(data);
        if (out.text.size() + static_cast<std::size_t>(count) > xml::maxOutputBytes) {
            return -1;
        }
        try {
            out.text.append(bytes, static_cast<std::size_t>(count));
        } catch (const std::bad_alloc&) {
            out.outOfMemory = true;
            return -1;
        }
        return count;
    }
};

[[noreturn]] void fail(const std::string& messages) {
    throw Error(errc::invalidCall, "XmlTransform", "Falha na transformação: " + messages);
}

std::string serialise(xmlDoc* result, xsltStylesheet* stylesheet) {
    const BothTags bothTags;
    Output output;
    xmlOutputBuffer* buffer = xmlOutputBufferCreateIO(Output::write, nullptr, &output, nullptr);
    const int saved = buffer == nullptr ? -1 : xsltSaveResultTo(buffer, result, stylesheet);
    const int closed = xmlOutputBufferClose(buffer);
    if (buffer == nullptr || output.outOfMemory) {
        throw std::bad_alloc();
    }
    if (saved < 0 || closed < 0) {
        fail("o resultado é grande demais.");
    }
    return std::move(output.text);
}

Stylesheet compile(const std::filesystem::path& path, std::string& reason) {
    const std::string name = files::toText(path);
    xml::Doc doc = xml::parse(files::readAll(path), nullptr, name.c_str(), xml::Purpose::Stylesheet, reason);
    if (!doc) {
        return nullptr;
    }
    const xml::MessageScope messages;
    Stylesheet stylesheet(xsltParseStylesheetDoc(doc.get()));
    if (stylesheet) {
        static_cast<void>(doc.release()); // the stylesheet's own now
    }
    if (!stylesheet || messages.triedToReachOut()) {
        reason = messages.text();
        return nullptr;
    }
    // The output is a text in UTF-8 here, so that is what it must say of itself.
    xmlFree(stylesheet->encoding);
    stylesheet->encoding = xmlStrdup(xml::bytes("UTF-8"));
    return stylesheet;
}

} // namespace

struct XmlTransform::Impl {
    Stylesheet stylesheet;
};

namespace {

struct Stored {
    files::Stamp stamp;
    std::shared_ptr<const XmlTransform> transform;
};

/// The compiled stylesheets by path. Threads take turns.
class Store {
public:
    std::shared_ptr<const XmlTransform> find(const std::string& key, const files::Stamp& stamp) {
        const std::lock_guard lock(mutex_);
        const auto known = stylesheets_.find(key);
        return known != stylesheets_.end() && known->second.stamp == stamp ? known->second.transform
                                                                           : nullptr;
    }
    void keep(const std::string& key, Stored stored) {
        const std::lock_guard lock(mutex_);
        stylesheets_.insert_or_assign(key, std::move(stored));
    }
    void clear() {
        const std::lock_guard lock(mutex_);
        stylesheets_.clear();
    }

private:
    std::mutex mutex_;
    std::unordered_map<std::string, Stored> stylesheets_;
};

Store& store() {
    static Store stylesheets;
    return stylesheets;
}

} // namespace

XmlTransform::XmlTransform()
    : impl_(std::make_unique<Impl>()) {}
XmlTransform::~XmlTransform() = default;

std::shared_ptr<const XmlTransform> XmlTransform::load(const std::filesystem::path& stylesheet,
                                                       std::string& reason) {
    reason.clear();
    try {
        const std::string key = files::toText(std::filesystem::absolute(stylesheet));
        const files::Stamp stamp = files::stamp(stylesheet);
        if (auto known = store().find(key, stamp)) {
            return known;
        }
        const std::shared_ptr<XmlTransform> fresh(new XmlTransform);
        fresh->impl_->stylesheet = compile(stylesheet, reason);
        if (fresh->impl_->stylesheet) {
            store().keep(key, Stored{stamp, fresh});
            return fresh;
        }
    } catch (const std::exception& failure) {
        reason = failure.what();
    }
    reason = "A folha de estilo não pode ser carregada: " + reason;
    return nullptr;
}

void XmlTransform::clearStore() {
    store().clear();
}

std::string XmlTransform::apply(const XmlDocument& document, std::chrono::milliseconds limit) const {
    if (document.empty()) {
        fail("o documento está vazio.");
    }
    xsltStylesheet* stylesheet = impl_->stylesheet.get();
    xmlDoc* source = document.impl_->doc.get();

    const xml::MessageScope messages;
    // Leaving out white space takes the nodes out of the tree, so it works on a copy, from the start on: the
    // processor keeps its keys by the document that it was given first.
    const Tree copy(stylesheet->stripSpaces != nullptr ? xmlCopyDoc(source, 1) : nullptr);
    xmlDoc* input = copy ? copy.get() : source;
    const Transform context(xsltNewTransformContext(stylesheet, input));
    const xml::TransformGuard guard(*context, messages, limit);
    const Tree result(xsltApplyStylesheetUser(stylesheet, input, nullptr, nullptr, nullptr, context.get()));
    if (guard.exceeded()) {
        fail("a folha de estilo foi além dos limites de tamanho ou de tempo.");
    }
    if (!result || context->state != XSLT_STATE_OK) {
        fail(messages.text());
    }
    return serialise(result.get(), stylesheet);
}

} // namespace tv
