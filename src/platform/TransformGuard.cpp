#include "platform/TransformGuard.h"

#include <libxml/xpathInternals.h>
#include <libxslt/documents.h>
#include <libxslt/xsltutils.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <new>

namespace tv::xml {

struct MessageScope::State {
    std::string messages;
    bool triedToReachOut = false;
};

/// What the running transform has made.
struct TransformGuard::Made {
    explicit Made(xsltTransformContext& running)
        : context(&running) {}

    xsltTransformContext* context;
    std::size_t nodes = 0;
    std::size_t textBytes = 0;         ///< Of the texts that are finished.
    const xmlNode* lastText = nullptr; ///< The one that may still grow.
    bool exceeded = false;

    void add(const xmlNode* node) {
        ++nodes;
        if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
            finishText();
            lastText = node;
        }
    }
    void finishText() {
        textBytes += lastText == nullptr ? 0 : view(lastText->content).size();
        lastText = nullptr;
    }
    std::size_t growingBytes() const {
        const bool grows = lastText != nullptr && lastText->content == context->lasttext;
        return grows ? static_cast<std::size_t>(context->lasttuse) : 0;
    }
};

namespace {

constexpr std::size_t maxMessageBytes = 64U << 10U;
/// The running scope and transform; transforms do not nest.
thread_local MessageScope::State* running = nullptr;
thread_local TransformGuard::Made* made = nullptr;

/// Keeps the text that `message` gives. No exception may pass through the library: without memory for it the
/// text is lost.
template<typename Message>
void keep(Message message) noexcept {
    try {
        if (running != nullptr && running->messages.size() < maxMessageBytes) {
            running->messages += message();
        }
    } catch (const std::bad_alloc&) {
        return;
    }
}

// The processor hands its messages over in the manner of printf.
// NOLINTNEXTLINE(cert-dcl50-cpp)
[[gnu::format(printf, 2, 3)]] void onMessage(void* /*data*/, const char* format, ...) {
    std::array<char, 4096> text{};
    va_list arguments;
    va_start(arguments, format);
    static_cast<void>(std::vsnprintf(text.data(), text.size(), format, arguments));
    va_end(arguments);
    keep([&text] { return text.data(); });
}

void onFault(void* /*data*/, xmlErrorPtr fault) {
    keep([fault] { return faultText(*fault) + "\n"; });
}

bool isOwnStylesheet(const xmlChar* uri) {
    return made != nullptr && view(uri) == view(made->context->style->doc->URL);
}

/// The processor's question before it reads a file.
int mayRead(xsltSecurityPrefs* /*preferences*/, xsltTransformContext* /*context*/, const char* uri) {
    return isOwnStylesheet(bytes(uri)) ? 1 : 0;
}

/// Stands where the processor loads files: includes, imports, document(). A stylesheet may look into itself,
/// as document('') does, and gets a copy of what was read already.
xmlDoc* loadForStylesheet(const xmlChar* uri, xmlDict* /*dict*/, int /*options*/, void* /*context*/,
                          xsltLoadType /*type*/) {
    if (isOwnStylesheet(uri)) {
        return xmlCopyDoc(made->context->style->doc, 1);
    }
    if (running != nullptr) {
        running->triedToReachOut = true;
        keep([uri] { return "o acesso a outro arquivo não é permitido: " + std::string(view(uri)) + "\n"; });
    }
    return nullptr;
}

void onNode(xmlNode* node) {
    made->add(node);
}

void onNodeFreed(xmlNode* node) {
    if (node == made->lastText) {
        made->finishText();
    }
}

/// Called before each instruction of the stylesheet.
void onInstruction(xmlNode* /*instruction*/, xmlNode* /*node*/, xsltTemplate* /*rule*/,
                   xsltTransformContext* context) {
    const bool tooMuch = made->nodes > maxResultNodes ||
                         made->textBytes + made->growingBytes() > maxOutputBytes ||
                         context->opCount >= context->opLimit;
    if (tooMuch) {
        made->exceeded = true;
        context->state = XSLT_STATE_STOPPED;
    }
}

/// The function concat(), which alone could make a text grow without an instruction's being carried out for
/// it.
void boundedConcat(xmlXPathParserContext* context, int count) {
    std::size_t size = 0;
    for (int i = 1; i <= count && i <= context->valueNr; ++i) {
        const xmlXPathObject* argument = context->valueTab[context->valueNr - i];
        size += argument->type == XPATH_STRING ? view(argument->stringval).size() : 0;
    }
    if (size > maxJoinedBytes) {
        made->exceeded = true;
        xmlXPathErr(context, XPATH_MEMORY_ERROR);
        return;
    }
    xmlXPathConcatFunction(context, count);
}

int onCall(xsltTemplate* /*rule*/, xmlNode* /*source*/) {
    return 0;
}
void onReturn() {}

/// Sets this thread's watchers of nodes. The library's functions for it set those of the main thread.
void watchNodes(xmlRegisterNodeFunc onMade, xmlDeregisterNodeFunc onFreed) {
    xmlRegisterNodeDefaultValue = onMade;
    xmlDeregisterNodeDefaultValue = onFreed;
}

/// The handlers of each instruction, in the shape in which the processor takes them.
struct InstructionHandlers {
    xsltHandleDebuggerCallback handler;
    xsltAddCallCallback add;
    xsltDropCallCallback drop;
};

/// What all threads share is set once; the handlers look at the thread's own scope and transform.
void install() {
    static const bool started = [] {
        static InstructionHandlers handlers{onInstruction, onCall, onReturn};
        xsltSetGenericErrorFunc(nullptr, onMessage);
        xsltSetLoaderFunc(loadForStylesheet);
        xsltSetDebuggerCallbacks(3, &handlers);
        xmlRegisterNodeDefault(nullptr); // from now on the library looks at watchers at all
        return true;
    }();
    static_cast<void>(started);
}

} // namespace

MessageScope::MessageScope()
    : state_(std::make_unique<State>()) {
    xml::start();
    install();
    running = state_.get();
    xmlSetStructuredErrorFunc(nullptr, onFault);
}

MessageScope::~MessageScope() {
    running = nullptr;
    xmlSetStructuredErrorFunc(nullptr, nullptr);
}

std::string MessageScope::text() const {
    std::string text = state_->messages;
    text.erase(text.find_last_not_of("\r\n ") + 1);
    return text;
}

bool MessageScope::triedToReachOut() const noexcept {
    return state_->triedToReachOut;
}

TransformGuard::TransformGuard(xsltTransformContext& context, const MessageScope& messages,
                               std::chrono::milliseconds limit)
    : context_(context)
    , made_(std::make_unique<Made>(context))
    , preferences_(xsltNewSecurityPrefs()) {
    for (const auto option : {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                              XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK}) {
        xsltSetSecurityPrefs(preferences_.get(), option, xsltSecurityForbid);
    }
    xsltSetSecurityPrefs(preferences_.get(), XSLT_SECPREF_READ_FILE, mayRead);
    xsltSetCtxtSecurityPrefs(preferences_.get(), &context);
    xmlXPathRegisterFunc(context.xpathCtxt, bytes("concat"), nullptr); // a taken name is not replaced
    xmlXPathRegisterFunc(context.xpathCtxt, bytes("concat"), boundedConcat);
    xsltSetTransformErrorFunc(&context, &messages.state(), onMessage);
    context.maxTemplateDepth = maxTemplateDepth;
    context.opLimit = maxInstructions;
    context.xpathCtxt->opLimit = maxXPathSteps;
    context.debugStatus = XSLT_DEBUG_RUN;
    deadline_ = std::make_unique<Deadline>(context, limit);
    made = made_.get(); // nothing fails from here on, so that the destructor always takes the watchers away
    watchNodes(onNode, onNodeFreed);
}

TransformGuard::~TransformGuard() {
    deadline_.reset();
    watchNodes(nullptr, nullptr);
    made = nullptr;
    context_.debugStatus = XSLT_DEBUG_NONE;
}

bool TransformGuard::exceeded() const noexcept {
    return made_->exceeded || deadline_->passed() || context_.opCount >= context_.opLimit;
}

} // namespace tv::xml
