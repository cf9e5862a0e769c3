#include "platform/XmlEvents.h"

#include "platform/Error.h"
#include "platform/Throws.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

// Schemas: compiled once for as long as their files stay the same, from local files only.

namespace tv::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::string schemaText(const std::string& declarations) {
    return "<?xml version=\"1.0\"?>\n<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">" +
           declarations + "</xs:schema>";
}

class SchemaCacheFixture : public ::testing::Test {
protected:
    /// Writes a file whose time of change differs from that of all before it.
    std::filesystem::path write(const std::string& name, const std::string& bytes) {
        std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        folder.file(name, bytes);
        time_ += std::chrono::seconds(1);
        std::filesystem::last_write_time(path, time_);
        return path;
    }
    std::vector<std::string> faultsOf(const std::filesystem::path& schema,
                                      const std::string& document) const {
        XmlEvents events;
        XmlReader(SchemaCache::get(schema)).parse(folder.file("documento.xml", document), events);
        return events.faults;
    }
    /// Why a schema does not load; empty when it does.
    static std::string reasonOf(const std::filesystem::path& schema) {
        try {
            SchemaCache::get(schema);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), SchemaCache::schemaNotLoaded);
            return error.description();
        }
        return {};
    }

    ScratchFolder folder;

private:
    std::filesystem::file_time_type time_ = std::filesystem::file_time_type::clock::now();
};

TEST_F(SchemaCacheFixture, GivesOneSchemaForAnUnchangedFile) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r' type='xs:int'/>"));
    EXPECT_EQ(SchemaCache::get(file), SchemaCache::get(file));
}

TEST_F(SchemaCacheFixture, CompilesAChangedFileAnew) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r' type='xs:int'/>"));
    EXPECT_THAT(faultsOf(file, "<r>x</r>"), ElementsAre(StartsWith("error C00CE184 1:5 ")));
    write("a.xsd", schemaText("<xs:element name='r' type='xs:string'/>"));
    EXPECT_THAT(faultsOf(file, "<r>x</r>"), IsEmpty());
}

TEST_F(SchemaCacheFixture, CompilesAFileOfTheSameSizeAnewByItsTime) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r' type='xs:int'/>"));
    const auto first = SchemaCache::get(file);
    write("a.xsd", schemaText("<xs:element name='s' type='xs:int'/>"));
    EXPECT_NE(SchemaCache::get(file), first);
    EXPECT_THAT(faultsOf(file, "<s>1</s>"), IsEmpty());
}

TEST_F(SchemaCacheFixture, CompilesAnewWhenAnIncludedFileChanges) {
    write("tipos.xsd", schemaText("<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
    const auto file =
        write("a.xsd", schemaText("<xs:include schemaLocation='tipos.xsd'/><xs:element name='r' type='T'/>"));
    const auto first = SchemaCache::get(file);
    EXPECT_EQ(SchemaCache::get(file), first);
    EXPECT_THAT(faultsOf(file, "<r>x</r>"), ElementsAre(StartsWith("error C00CE184 ")));
    write("tipos.xsd",
          schemaText("<xs:simpleType name='T'><xs:restriction base='xs:string'/></xs:simpleType>"));
    EXPECT_NE(SchemaCache::get(file), first);
    EXPECT_THAT(faultsOf(file, "<r>x</r>"), IsEmpty());
}

TEST_F(SchemaCacheFixture, NoticesThatAnIncludedFileIsGone) {
    const auto types = write(
        "tipos.xsd", schemaText("<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
    const auto file =
        write("a.xsd", schemaText("<xs:include schemaLocation='tipos.xsd'/><xs:element name='r' type='T'/>"));
    EXPECT_THAT(reasonOf(file), IsEmpty());
    std::filesystem::remove(types);
    EXPECT_THAT(reasonOf(file), HasSubstr("'tipos.xsd' n\u00E3o pode ser lido"));
}

TEST_F(SchemaCacheFixture, NoticesThatTheFileIsGone) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r'/>"));
    SchemaCache::get(file);
    std::filesystem::remove(file);
    EXPECT_EQ(errorOf([&] { SchemaCache::get(file); }), errc::fileNotFound);
}

TEST_F(SchemaCacheFixture, TakesARepairedFile) {
    const auto file = write("a.xsd", "<xs:schema");
    EXPECT_THAT(reasonOf(file), Not(IsEmpty()));
    EXPECT_THAT(reasonOf(file), Not(IsEmpty())); // a failure is no schema to be kept
    write("a.xsd", schemaText("<xs:element name='r'/>"));
    EXPECT_THAT(reasonOf(file), IsEmpty());
}

TEST_F(SchemaCacheFixture, SchemaInUseOutlivesItsFileAndTheCache) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r' type='xs:int'/>"));
    XmlReader reader(SchemaCache::get(file));
    std::filesystem::remove(file);
    SchemaCache::clear();
    XmlEvents events;
    reader.parse(folder.file("d.xml", "<r>x</r>"), events);
    EXPECT_THAT(events.faults, ElementsAre(StartsWith("error C00CE184 ")));
}

TEST_F(SchemaCacheFixture, ClearForgets) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r'/>"));
    const auto first = SchemaCache::get(file);
    SchemaCache::clear();
    EXPECT_NE(SchemaCache::get(file), first);
}

TEST_F(SchemaCacheFixture, EachThreadHasItsOwn) {
    const auto file = write("a.xsd", schemaText("<xs:element name='r' type='xs:int'/>"));
    const auto mine = SchemaCache::get(file);
    std::shared_ptr<const Schema> other;
    std::thread([&] { other = SchemaCache::get(file); }).join();
    EXPECT_NE(mine, other);
}

// --- files of a schema

TEST_F(SchemaCacheFixture, IncludesOfFoldersBelowAreRead) {
    write("comum/tipos.xsd",
          schemaText("<xs:include schemaLocation='base.xsd'/>"
                     "<xs:simpleType name='T'><xs:restriction base='B'/></xs:simpleType>"));
    write("comum/base.xsd",
          schemaText("<xs:simpleType name='B'><xs:restriction base='xs:int'/></xs:simpleType>"));
    write("base.xsd",
          schemaText("<xs:simpleType name='B'><xs:restriction base='xs:string'/></xs:simpleType>"));
    const auto file =
        write("a.xsd",
              schemaText("<xs:include schemaLocation='./comum/tipos.xsd'/><xs:element name='r' type='T'/>"));
    EXPECT_THAT(faultsOf(file, "<r>x</r>"), ElementsAre(StartsWith("error C00CE184 ")));
}

TEST_F(SchemaCacheFixture, IncludesAreFoundWhateverTheFolderIsCalled) {
    for (const std::string name : {"Aplica\u00E7\u00E3o nova", "100%25", "a#b?c"}) {
        write(name + "/tipos.xsd",
              schemaText("<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
        const auto file =
            write(name + "/a.xsd",
                  schemaText("<xs:include schemaLocation='tipos.xsd'/><xs:element name='r' type='T'/>"));
        EXPECT_THAT(faultsOf(file, "<r>x</r>"), ElementsAre(StartsWith("error C00CE184 "))) << name;
    }
}

TEST_F(SchemaCacheFixture, IncludesAreFoundInAnyCase) {
    write("tipos.xsd", schemaText("<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
    const auto file =
        write("a.xsd", schemaText("<xs:include schemaLocation='TIPOS.XSD'/><xs:element name='r' type='T'/>"));
    EXPECT_THAT(reasonOf(file), IsEmpty());
}

TEST_F(SchemaCacheFixture, FilesThatIncludeEachOtherAreReadOnce) {
    write("b.xsd", schemaText("<xs:include schemaLocation='a.xsd'/>"
                              "<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
    const auto file =
        write("a.xsd", schemaText("<xs:include schemaLocation='b.xsd'/><xs:element name='r' type='T'/>"));
    EXPECT_THAT(faultsOf(file, "<r>1</r>"), IsEmpty());
}

TEST_F(SchemaCacheFixture, IncludesOutsideOfTheFolderAreRefused) {
    write("fora.xsd", schemaText("<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
    write("XSD/dentro.xsd",
          schemaText("<xs:simpleType name='T'><xs:restriction base='xs:int'/></xs:simpleType>"));
    for (const std::string& name :
         {std::string("../fora.xsd"), (folder / "fora.xsd").string(), (folder / "XSD/dentro.xsd").string(),
          "file://" + (folder / "XSD/dentro.xsd").string(), std::string("http://127.0.0.1:1/dentro.xsd"),
          std::string("XSD/../../fora.xsd"), std::string("nada.xsd")}) {
        const auto file = write("XSD/a.xsd", schemaText("<xs:include schemaLocation='" + name +
                                                        "'/><xs:element name='r' type='T'/>"));
        EXPECT_THAT(reasonOf(file), AllOf(HasSubstr("a.xsd"), HasSubstr("o arquivo inclu\u00EDdo '" + name +
                                                                        "' n\u00E3o pode ser lido")))
            << name;
    }
}

TEST_F(SchemaCacheFixture, ImportOfANamespaceWithoutAFileIsAllowed) {
    const auto file =
        write("a.xsd", schemaText("<xs:import namespace='urn:x'/><xs:element name='r' type='xs:int'/>"));
    EXPECT_THAT(reasonOf(file), IsEmpty());
}

TEST_F(SchemaCacheFixture, ImportedNamespacesAreChecked) {
    write("p.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:p'>"
                   "<xs:element name='x' type='xs:int'/></xs:schema>");
    const auto file =
        write("a.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:p='urn:p'>"
                       "<xs:import namespace='urn:p' schemaLocation='p.xsd'/>"
                       "<xs:element name='r'><xs:complexType><xs:sequence>"
                       "<xs:element ref='p:x'/></xs:sequence></xs:complexType></xs:element></xs:schema>");
    EXPECT_THAT(faultsOf(file, "<r><p:x xmlns:p='urn:p'>1</p:x></r>"), IsEmpty());
    EXPECT_THAT(faultsOf(file, "<r><p:x xmlns:p='urn:p'>y</p:x></r>"),
                ElementsAre(StartsWith("error C00CE184 1:26 ")));
    EXPECT_THAT(faultsOf(file, "<r><x>1</x></r>"), ElementsAre(StartsWith("error 80004005 1:4 ")));
}

TEST_F(SchemaCacheFixture, DocumentTypeOfASchemaIsNotFetched) {
    const auto file = write("a.xsd", "<!DOCTYPE xs:schema SYSTEM \"http://127.0.0.1:1/XMLSchema.dtd\">"
                                     "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                                     "<xs:element name='r'/></xs:schema>");
    EXPECT_THAT(reasonOf(file), IsEmpty());
}

TEST_F(SchemaCacheFixture, EntitiesInASchemaAreRefused) {
    const std::string bomb = "<!DOCTYPE x [<!ENTITY a \"b\"><!ENTITY c \"&a;&a;\">]>";
    const auto file = write("a.xsd", bomb + "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'/>");
    EXPECT_THAT(reasonOf(file), HasSubstr("declara entidades"));
    write("tipos.xsd", bomb + "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'/>");
    const auto other =
        write("b.xsd", schemaText("<xs:include schemaLocation='tipos.xsd'/><xs:element name='r'/>"));
    EXPECT_THAT(reasonOf(other), HasSubstr("'tipos.xsd' declara entidades"));
}

// --- schemas that do not load

TEST_F(SchemaCacheFixture, MissingSchemaIsError53) {
    try {
        SchemaCache::get(folder / "nada.xsd");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errc::fileNotFound);
        EXPECT_THAT(error.description(),
                    AllOf(HasSubstr("nada.xsd"), HasSubstr("o arquivo n\u00E3o existe")));
    }
}

TEST_F(SchemaCacheFixture, FolderIsError70) {
    EXPECT_EQ(errorOf([&] { SchemaCache::get(folder.path()); }), errc::permissionDenied);
}

struct BrokenSchema {
    const char* name;
    std::string text;
    const char* reason;
};
void PrintTo(const BrokenSchema& row, std::ostream* out) {
    *out << row.name;
}

class BrokenSchemas : public SchemaCacheFixture, public ::testing::WithParamInterface<BrokenSchema> {};

TEST_P(BrokenSchemas, TellTheirReason) {
    const auto file = write("quebrado.xsd", GetParam().text);
    EXPECT_THAT(reasonOf(file),
                AllOf(StartsWith("O esquema '" + file.string() + "' n\u00E3o p\u00F4de ser lido: "),
                      HasSubstr(GetParam().reason)));
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenSchemas,
    ::testing::Values(
        BrokenSchema{"Empty", "", "(quebrado.xsd, linha 1, coluna 1)"},
        BrokenSchema{"Text", "isto n\u00E3o \u00E9 um esquema", "(quebrado.xsd, linha 1, coluna"},
        BrokenSchema{"NotWellFormed", "<?xml version=\"1.0\"?>\n<xs:schema",
                     "(quebrado.xsd, linha 2, coluna"},
        BrokenSchema{"AnotherDocument", "<posicao/>", "(quebrado.xsd, linha 1, coluna"},
        BrokenSchema{"UnknownType", schemaText("\n<xs:element name='r' type='Nada'/>"),
                     "Nada' not found (quebrado.xsd, linha 3, coluna"},
        BrokenSchema{"UnknownElement", schemaText("<xs:elemento name='r'/>"),
                     "(quebrado.xsd, linha 2, coluna"},
        BrokenSchema{"BadPattern",
                     schemaText("<xs:element name='r'><xs:simpleType><xs:restriction base='xs:string'>"
                                "<xs:pattern value='[a-'/></xs:restriction></xs:simpleType></xs:element>"),
                     "(quebrado.xsd, linha 2, coluna"},
        BrokenSchema{
            "BadOccurrence",
            schemaText("<xs:element name='r'><xs:complexType><xs:sequence><xs:element name='a' minOccurs='3' "
                       "maxOccurs='2'/></xs:sequence></xs:complexType></xs:element>"),
            "(quebrado.xsd, linha 2, coluna"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SchemaCacheFixture, FaultOfAnIncludedFileNamesIt) {
    write("tipos.xsd", schemaText("\n\n<xs:element name='q' type='Nada'/>"));
    const auto file =
        write("a.xsd", schemaText("<xs:include schemaLocation='tipos.xsd'/><xs:element name='r'/>"));
    EXPECT_THAT(reasonOf(file), HasSubstr("(tipos.xsd, linha 4, coluna"));
}

} // namespace
} // namespace tv::test
