#include "platform/SchemaCache.h"

#include "platform/Error.h"
#include "platform/SchemaImpl.h"
#include "platform/XercesSupport.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <map>
#include <mutex>
#include <thread>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

Schema::Schema()
    : impl_(std::make_unique<Impl>()) {}

Schema::~Schema() = default;

namespace {

// Entities are of no use in a schema, and the library sets no bound to what they grow into.
bool declaresEntities(const std::filesystem::path& file) {
    std::string bytes = files::readAll(file);
    std::erase(bytes, '\0'); // UTF-16
    return bytes.find("<!ENTITY") != std::string::npos;
}

// Compiles a schema file: collects what is wrong with it, and lets it include only files of its own folder.
class SchemaLoader : public SAX2XMLReaderImpl, public XMLEntityResolver {
public:
    SchemaLoader(XMLGrammarPool& pool, std::filesystem::path file)
        : SAX2XMLReaderImpl(XMLPlatformUtils::fgMemoryManager, &pool)
        , file_(std::move(file)) {
        setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
        setFeature(XMLUni::fgXercesSchema, true);
        setFeature(XMLUni::fgXercesSchemaFullChecking, true);
        setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
        setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        setXMLEntityResolver(this);
        setErrorHandler(&unused_); // without one the reader tells nobody of its errors
        files_.push_back(file_);
    }

    /// Throws Error when the file is no valid schema.
    void load() {
        xerces::FileSource source(file_);
        XmlFault fault;
        if (!source.open(fault)) {
            const bool missing = fault.code == xmlcode::fileNotFound;
            throw Error(missing ? errc::fileNotFound : errc::permissionDenied, "SchemaCache", fault.message);
        }
        refuseEntities(file_);
        if (fault_.empty()) {
            compile(source);
        }
        if (!fault_.empty()) {
            throw Error(SchemaCache::schemaNotLoaded, "SchemaCache",
                        "O esquema '" + files::toText(file_) + "' não pôde ser lido: " + fault_);
        }
    }

    const std::vector<std::filesystem::path>& files() const { return files_; }

    void error(const unsigned int number, const XMLCh* const domain, const ErrTypes type,
               const XMLCh* const text, const XMLCh* const systemId, const XMLCh* const /*publicId*/,
               const XMLFileLoc line, const XMLFileLoc column) override {
        if (type != ErrType_Warning && fault_.empty()) {
            const std::filesystem::path part(xerces::toUtf8(systemId));
            fault_ = xerces::faultMessage(number, domain, text) + " (" + files::toText(part.filename()) +
                     ", linha " + std::to_string(line) + ", coluna " + std::to_string(column) + ")";
        }
    }

    // The base class has a second member of this name for its own use.
    using SAX2XMLReaderImpl::resolveEntity;
    InputSource* resolveEntity(XMLResourceIdentifier* resource) override {
        const std::string name = xerces::toUtf8(resource->getSystemId());
        switch (resource->getResourceIdentifierType()) {
        case XMLResourceIdentifier::SchemaInclude:
        case XMLResourceIdentifier::SchemaImport:
        case XMLResourceIdentifier::SchemaRedefine:
            // An import may name a namespace alone.
            return name.empty() ? nullptr : openPart(name, xerces::toUtf8(resource->getBaseURI()));
        default:
            return emptySource(); // DTDs and entities: not read
        }
    }

private:
    void compile(const InputSource& source) {
        try {
            const Grammar* grammar = loadGrammar(source, Grammar::SchemaGrammarType, true);
            if (grammar == nullptr && fault_.empty()) {
                fault_ = "o arquivo não é um esquema.";
            }
        } catch (const XMLException& failure) {
            if (fault_.empty()) {
                fault_ = xerces::toUtf8(failure.getMessage());
            }
        } catch (const xerces::ReadFailure& failure) {
            fault_ = failure.reason;
        }
    }

    static InputSource* emptySource() {
        static const XMLByte nothing = 0;
        return new MemBufInputSource(&nothing, 0, "");
    }

    void refuseEntities(const std::filesystem::path& part) {
        if (fault_.empty() && declaresEntities(part)) {
            fault_ = "'" + files::toText(part.filename()) +
                     "' declara entidades, que não são aceitas num esquema.";
        }
    }

    /// The file that an include names, seen from the file that it stands in. Only files of the schema's
    /// folder and below are read.
    InputSource* openPart(const std::string& name, const std::string& base) {
        const std::filesystem::path folder = file_.parent_path();
        const std::filesystem::path from = std::filesystem::path(base).parent_path();
        const std::filesystem::path part = files::findNoCase(from, name).lexically_normal();
        const std::filesystem::path inside = part.lexically_relative(folder.lexically_normal());
        const bool isInFolder = std::filesystem::path(name).is_relative() && !inside.empty() &&
                                *inside.begin() != ".." && name.find("://") == std::string::npos;
        auto source = std::make_unique<xerces::FileSource>(part);
        XmlFault fault;
        if (!isInFolder || !source->open(fault)) {
            if (fault_.empty()) {
                fault_ = "o arquivo incluído '" + name + "' não pode ser lido.";
            }
            return emptySource();
        }
        refuseEntities(part);
        if (!fault_.empty()) {
            return emptySource();
        }
        if (std::find(files_.begin(), files_.end(), part) == files_.end()) {
            files_.push_back(part);
        }
        return source.release();
    }

    std::filesystem::path file_;
    std::vector<std::filesystem::path> files_;
    std::string fault_;
    DefaultHandler unused_;
};

// Compiled schemas by file. What a schema makes on first use is not shared, so each thread keeps its own.
std::map<std::filesystem::path, std::shared_ptr<const Schema>>& store() {
    static thread_local std::map<std::filesystem::path, std::shared_ptr<const Schema>> schemas;
    return schemas;
}

bool isUnchanged(const Schema& schema) {
    const auto& made = schema.impl().files;
    return std::all_of(made.begin(), made.end(), [](const auto& entry) {
        try {
            return files::stamp(entry.first) == entry.second;
        } catch (const Error&) {
            return false;
        }
    });
}

} // namespace

std::shared_ptr<const Schema> SchemaCache::get(const std::filesystem::path& file) {
    const auto known = store().find(file);
    if (known != store().end() && isUnchanged(*known->second)) {
        return known->second;
    }
    xerces::start();
    std::shared_ptr<Schema> schema(new Schema); // the constructor is private
    xerces::memoryGuarded([&] { compile(*schema->impl_, file); });
    store()[file] = schema;
    return schema;
}

void SchemaCache::compile(Schema::Impl& impl, const std::filesystem::path& file) {
    impl.pool = std::make_unique<XMLGrammarPoolImpl>(XMLPlatformUtils::fgMemoryManager);
    {
        SchemaLoader loader(*impl.pool, file);
        loader.load();
        for (const std::filesystem::path& part : loader.files()) {
            impl.files.emplace_back(part, files::stamp(part));
        }
    }
    impl.pool->lockPool();
    impl.values.attach(*impl.pool);
}

void SchemaCache::clear() {
    store().clear();
}

} // namespace tv
