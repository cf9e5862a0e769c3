#include "platform/XmlEvents.h"

#include <gmock/gmock.h>

// Children in the wrong place, too many or missing: which findings they make, and which they do not.

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// Particles over children of one letter, without content: the schema of a table's rows.
constexpr auto abcd =
    "<xs:sequence>"
    "<xs:element name='a'/><xs:element name='b'/><xs:element name='c'/><xs:element name='d'/>"
    "</xs:sequence>";
constexpr auto sections = "<xs:sequence>"
                          "<xs:element name='h'/>"
                          "<xs:element name='a' minOccurs='0' maxOccurs='unbounded'/>"
                          "<xs:element name='b' minOccurs='0' maxOccurs='unbounded'/>"
                          "<xs:element name='c' minOccurs='0' maxOccurs='unbounded'/>"
                          "<xs:element name='d' minOccurs='0'/>"
                          "</xs:sequence>";
constexpr auto twoOrThree = "<xs:sequence>"
                            "<xs:element name='a' minOccurs='2' maxOccurs='3'/><xs:element name='b'/>"
                            "</xs:sequence>";
constexpr auto upTo40 = "<xs:sequence>"
                        "<xs:element name='a' minOccurs='1' maxOccurs='40'/><xs:element name='b'/>"
                        "</xs:sequence>";
constexpr auto pairsUpToTwo = "<xs:sequence minOccurs='0' maxOccurs='2'>"
                              "<xs:element name='a'/><xs:element name='b'/>"
                              "</xs:sequence>";
constexpr auto oneOf = "<xs:choice><xs:element name='a'/><xs:element name='b'/></xs:choice>";
constexpr auto anyNumberOf =
    "<xs:choice minOccurs='0' maxOccurs='unbounded'><xs:element name='a'/><xs:element name='b'/></xs:choice>";
constexpr auto pairOrSingle = "<xs:sequence>"
                              "<xs:choice>"
                              "<xs:sequence><xs:element name='a'/><xs:element name='b'/></xs:sequence>"
                              "<xs:element name='c'/>"
                              "</xs:choice>"
                              "<xs:element name='d' minOccurs='0'/>"
                              "</xs:sequence>";
constexpr auto allOf = "<xs:all>"
                       "<xs:element name='a'/><xs:element name='b'/><xs:element name='c' minOccurs='0'/>"
                       "</xs:all>";
constexpr auto optionalAll = "<xs:all minOccurs='0'><xs:element name='a'/><xs:element name='b'/></xs:all>";
constexpr auto groupThenOptional = "<xs:sequence>"
                                   "<xs:sequence maxOccurs='unbounded'>"
                                   "<xs:element name='a'/><xs:element name='b' minOccurs='0'/>"
                                   "</xs:sequence>"
                                   "<xs:element name='c'/>"
                                   "</xs:sequence>";

struct Order {
    const char* name;
    const char* particles;
    std::string children;        ///< One letter each.
    std::vector<int> unexpected; ///< Which of them, from 1, are told as misplaced.
    std::string missing;         ///< What is told at the end; empty for nothing.
};
void PrintTo(const Order& row, std::ostream* out) {
    *out << row.name;
}

class Orders : public XmlReaderFixture, public ::testing::WithParamInterface<Order> {};

TEST_P(Orders, AreToldOnceEach) {
    const Order& row = GetParam();
    useSchema("<xs:element name='r'><xs:complexType>" + std::string(row.particles) +
              "</xs:complexType></xs:element>");
    std::string document = "<r>";
    for (const char child : row.children) {
        document += std::string("<") + child + "/>";
    }
    document += "</r>";

    std::vector<std::string> expected;
    for (const int which : row.unexpected) {
        expected.push_back("error 80004005 1:" + std::to_string(4 * which) + " O elemento '" +
                           row.children.at(static_cast<std::size_t>(which) - 1) +
                           "' n\u00E3o \u00E9 permitido aqui.");
    }
    if (!row.missing.empty()) {
        expected.push_back("error C00CE015 1:" + std::to_string(4 + 4 * row.children.size()) + " " +
                           row.missing);
    }
    EXPECT_EQ(faultsOf(document), expected);
}

const std::vector<Order> rows{
    {"Right", abcd, "abcd", {}, ""},
    {"Unknown", abcd, "abxcd", {3}, ""},
    {"UnknownFirst", abcd, "xabcd", {1}, ""},
    {"UnknownLast", abcd, "abcdx", {5}, ""},
    {"SeveralUnknown", abcd, "axbycdz", {2, 4, 7}, ""},
    {"UnknownInARow", abcd, "abxyzcd", {3, 4, 5}, ""},
    {"UnknownInPlaceOfAnother", abcd, "axcd", {2}, ""},
    {"UnknownInPlaceOfTheFirst", abcd, "xbcd", {1}, ""},
    {"UnknownInPlaceOfTheLast", abcd, "abcx", {4}, ""},
    {"Repeated", abcd, "aabcd", {2}, ""},
    {"RepeatedLater", abcd, "abcad", {4}, ""},
    {"RepeatedAtTheEnd", abcd, "abcda", {5}, ""},
    {"SeveralRepeated", abcd, "aabbcd", {2, 4}, ""},
    {"AllRepeated", abcd, "abcdabcd", {5, 6, 7, 8}, ""},
    {"SwappedFirst", abcd, "bacd", {1}, ""},
    {"SwappedMiddle", abcd, "acbd", {2}, ""},
    {"SwappedLast", abcd, "abdc", {3}, ""},
    {"TwoSwaps", abcd, "badc", {1, 3}, ""},
    {"MovedToTheFront", abcd, "dabc", {1}, ""},
    {"MovedEarlier", abcd, "acbd", {2}, ""},
    {"MovedLater", abcd, "acdb", {2}, ""},
    {"MovedToTheEnd", abcd, "bcda", {1}, ""},
    {"MissingFirst", abcd, "bcd", {1}, ""},
    {"MissingInTheMiddle", abcd, "abd", {3}, ""},
    {"MissingLast", abcd, "abc", {}, "Falta o elemento obrigat\u00F3rio 'd'."},
    {"MissingSeveral", abcd, "ab", {}, "Faltam os elementos obrigat\u00F3rios 'c', 'd'."},
    {"MissingAll", abcd, "", {}, "Faltam os elementos obrigat\u00F3rios 'a', 'b', 'c', 'd'."},
    {"MissingBehindUnknown", abcd, "axbc", {2}, "Falta o elemento obrigat\u00F3rio 'd'."},
    {"MissingBehindRepeated", abcd, "aab", {2}, "Faltam os elementos obrigat\u00F3rios 'c', 'd'."},
    {"MissingInTheMiddleAndLast", abcd, "ac", {2}, "Falta o elemento obrigat\u00F3rio 'd'."},
    {"UnknownAndRepeatedAndMissing", abcd, "axaabcx", {2, 3, 4, 7}, ""},

    {"SectionsRight", sections, "haabcccd", {}, ""},
    {"SectionsNone", sections, "h", {}, ""},
    {"SectionsHeaderMissing", sections, "abc", {1}, ""},
    {"SectionsHeaderTwice", sections, "hhab", {2}, ""},
    {"SectionsHeaderLate", sections, "ahbc", {1}, ""},
    {"SectionsMovedEarlier", sections, "hcaabbcc", {3}, ""},
    {"SectionsMovedLater", sections, "hbcad", {4}, ""},
    {"SectionsMovedLaterTwice", sections, "habaca", {4, 6}, ""},
    {"SectionsSwapped", sections, "hbbaac", {4}, ""},
    {"SectionsUnknownOften", sections, "haxaxbxd", {3, 5, 7}, ""},
    {"SectionsSingleTwice", sections, "habdd", {5}, ""},
    {"SectionsSingleEarly", sections, "hdabc", {3}, ""},

    {"BoundsLow", twoOrThree, "aab", {}, ""},
    {"BoundsHigh", twoOrThree, "aaab", {}, ""},
    {"BoundsTooMany", twoOrThree, "aaaab", {4}, ""},
    {"BoundsFarTooMany", twoOrThree, "aaaaaab", {4, 5, 6}, ""},
    {"BoundsTooFew", twoOrThree, "ab", {2}, ""},
    {"BoundsNone", twoOrThree, "b", {1}, ""},
    {"BoundsEnd", twoOrThree, "a", {}, "Faltam os elementos obrigat\u00F3rios 'a', 'b'."},
    {"CountedLow", upTo40, "ab", {}, ""},
    {"CountedHigh", upTo40, repeated("a", 40) + "b", {}, ""},
    {"CountedTooMany", upTo40, repeated("a", 42) + "b", {41, 42}, ""},
    {"CountedTooManyAndUnknown", upTo40, repeated("a", 20) + "x" + repeated("a", 21) + "b", {21, 42}, ""},
    {"CountedNone", upTo40, "b", {1}, ""},
    {"CountedEnd", upTo40, repeated("a", 39), {}, "Falta o elemento obrigat\u00F3rio 'b'."},
    {"PairsNone", pairsUpToTwo, "", {}, ""},
    {"PairsTwo", pairsUpToTwo, "abab", {}, ""},
    {"PairsThree", pairsUpToTwo, "ababab", {5, 6}, ""},
    {"PairsHalf", pairsUpToTwo, "aba", {}, "Falta o elemento obrigat\u00F3rio 'b'."},
    {"PairsSwapped", pairsUpToTwo, "ba", {1}, ""},
    {"GroupRepeats", groupThenOptional, "aabaabc", {}, ""},
    {"GroupUnended", groupThenOptional, "aab", {}, "Falta o elemento obrigat\u00F3rio 'c'."},
    {"GroupTwiceInside", groupThenOptional, "abbac", {3}, ""},

    {"ChoiceFirst", oneOf, "a", {}, ""},
    {"ChoiceSecond", oneOf, "b", {}, ""},
    {"ChoiceNone", oneOf, "", {}, "Falta um destes elementos: 'a', 'b'."},
    {"ChoiceBoth", oneOf, "ab", {2}, ""},
    {"ChoiceUnknown", oneOf, "x", {1}, ""},
    {"ChoiceUnknownAndOne", oneOf, "xa", {1}, ""},
    {"ChoicesAnyOrder", anyNumberOf, "abbaab", {}, ""},
    {"ChoicesUnknown", anyNumberOf, "axbya", {2, 4}, ""},
    {"BranchPair", pairOrSingle, "abd", {}, ""},
    {"BranchSingle", pairOrSingle, "cd", {}, ""},
    {"BranchHalf", pairOrSingle, "a", {}, "Falta o elemento obrigat\u00F3rio 'b'."},
    {"BranchMixed", pairOrSingle, "abc", {3}, ""},
    {"BranchNone", pairOrSingle, "", {}, "Falta um destes elementos: 'a', 'c'."},

    {"AllOrder", allOf, "cba", {}, ""},
    {"AllWithoutOptional", allOf, "ba", {}, ""},
    {"AllMissingOne", allOf, "cb", {}, "Falta o elemento obrigat\u00F3rio 'a'."},
    {"AllMissingSeveral", allOf, "", {}, "Faltam os elementos obrigat\u00F3rios 'a', 'b'."},
    {"AllTwice", allOf, "abab", {3, 4}, ""},
    {"AllUnknown", allOf, "axb", {2}, ""},
    {"OptionalAllNone", optionalAll, "", {}, ""},
    {"OptionalAllHalf", optionalAll, "a", {}, "Falta o elemento obrigat\u00F3rio 'b'."},
};

INSTANTIATE_TEST_SUITE_P(All, Orders, ::testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

// --- wildcards and other namespaces

class XmlReaderWildcards : public XmlReaderFixture {
protected:
    void useWildcard(const std::string& attributes) {
        useSchema(
            "<xs:element name='r'><xs:complexType><xs:sequence>"
            "<xs:element name='a' type='xs:int'/><xs:any " +
            attributes +
            "/><xs:element name='z' type='xs:int' minOccurs='0'/></xs:sequence></xs:complexType></xs:element>"
            "<xs:element name='g' type='xs:int'/>");
    }
};

TEST_F(XmlReaderWildcards, LaxTakesUnknownElementsAndChecksKnownOnes) {
    useWildcard("processContents='lax' namespace='##any' minOccurs='0' maxOccurs='2'");
    EXPECT_THAT(faultsOf("<r><a>1</a><x>texto<y/></x><z>1</z></r>"), IsEmpty());
    EXPECT_THAT(faultsOf("<r><a>1</a><x/><g>x</g><z>x</z></r>"),
                ElementsAre(StartsWith("error C00CE184 1:20 "), StartsWith("error C00CE184 1:28 ")));
    EXPECT_THAT(faultsOf("<r><a>1</a><x/><x/><x/><z>1</z></r>"),
                ElementsAre(StartsWith("error 80004005 1:20 ")));
}

TEST_F(XmlReaderWildcards, OtherNamespacesAreTakenUpToTheBound) {
    useWildcard("processContents='lax' namespace='##other' minOccurs='0' maxOccurs='2'");
    const std::string p = "<p:x xmlns:p='urn:p'><p:y/></p:x>";
    EXPECT_THAT(faultsOf("<r><a>1</a></r>"), IsEmpty());
    EXPECT_THAT(faultsOf("<r><a>1</a>" + p + p + "<z>1</z></r>"), IsEmpty());
    EXPECT_THAT(faultsOf("<r><a>1</a>" + p + p + p + "<z>x</z></r>"),
                ElementsAre(StartsWith("error 80004005 1:78 "), StartsWith("error C00CE184 1:115 ")));
    EXPECT_THAT(faultsOf("<r>" + p + "<a>1</a></r>"), ElementsAre(StartsWith("error 80004005 1:4 ")));
    EXPECT_THAT(faultsOf("<r><a>1</a><x/></r>"), ElementsAre(StartsWith("error 80004005 1:12 ")));
}

TEST_F(XmlReaderWildcards, StrictTakesDeclaredElementsOnly) {
    useWildcard("processContents='strict' namespace='##other' minOccurs='0' maxOccurs='2'");
    EXPECT_THAT(faultsOf("<r><a>1</a><p:x xmlns:p='urn:p'/><z>1</z></r>"),
                ElementsAre("error 80004005 1:12 O elemento 'x' n\u00E3o \u00E9 permitido aqui."));
}

TEST_F(XmlReaderWildcards, SkipTakesWhateverItIs) {
    useWildcard("processContents='skip' namespace='##other' minOccurs='1' maxOccurs='unbounded'");
    EXPECT_THAT(faultsOf("<r><a>1</a><p:x xmlns:p='urn:p'>texto<g xmlns=''>nada</g></p:x><z>1</z></r>"),
                IsEmpty());
    EXPECT_THAT(faultsOf("<r><a>1</a></r>"),
                ElementsAre("error C00CE015 1:12 Falta o elemento obrigat\u00F3rio '(qualquer)'."));
}

TEST_F(XmlReaderWildcards, OwnNamespaceIsCheckedInside) {
    useSchema("<xs:element name='r'><xs:complexType><xs:sequence>"
              "<xs:any namespace='##local' processContents='lax' maxOccurs='3'/>"
              "</xs:sequence></xs:complexType></xs:element><xs:element name='g' type='xs:int'/>");
    EXPECT_THAT(faultsOf("<r><g>x</g><h><g>y</g></h><g>1</g></r>"),
                ElementsAre(StartsWith("error C00CE184 1:8 ")));
    EXPECT_THAT(faultsOf("<r><g>1</g><p:g xmlns:p='urn:p'/></r>"),
                ElementsAre(StartsWith("error 80004005 1:12 ")));
}

TEST_F(XmlReaderWildcards, ElementWithoutATypeHoldsAnything) {
    useSchema("<xs:element name='r'/>");
    EXPECT_THAT(faultsOf("<r a='1'>texto<x><y/></x><p:z xmlns:p='urn:p'/></r>"), IsEmpty());
}

TEST_F(XmlReaderWildcards, ElementsOfAForeignNamespaceAreUnexpected) {
    useSchema(
        "<xs:element name='r'><xs:complexType><xs:sequence>"
        "<xs:element name='a' type='xs:int' maxOccurs='2'/></xs:sequence></xs:complexType></xs:element>");
    EXPECT_THAT(faultsOf("<r><p:a xmlns:p='urn:p'>x<p:b/></p:a><a>1</a><a>x</a></r>"),
                ElementsAre(StartsWith("error 80004005 1:4 "), StartsWith("error C00CE184 1:50 ")));
    EXPECT_THAT(faultsOf("<r xmlns='urn:p'><a>x</a></r>"), ElementsAre(StartsWith("error 80004005 1:1 ")));
}

// --- what stands around an unexpected element

class XmlReaderUnexpected : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="s" maxOccurs="unbounded"><xs:complexType><xs:sequence>
                <xs:element name="a" type="xs:int"/>
                <xs:element name="b" type="xs:int"/>
                <xs:element name="c" type="xs:int" minOccurs="0"/>
              </xs:sequence></xs:complexType></xs:element>
            </xs:sequence></xs:complexType></xs:element>)");
    }
};

TEST_F(XmlReaderUnexpected, IsToldBeforeItStarts) {
    EXPECT_THAT(read("<r><s><a>1</a><x>2</x><b>3</b></s></r>").all,
                ElementsAre("document", "<r>", "<s>", "<a>", "'1'", "</a> 1:11",
                            "error 80004005 1:15 O elemento 'x' n\u00E3o \u00E9 permitido aqui.", "<x>",
                            "'2'", "</x> 1:19", "<b>", "'3'", "</b> 1:27", "</s> 1:31", "</r> 1:35", "end"));
}

TEST_F(XmlReaderUnexpected, FaultsBehindItAreTold) {
    EXPECT_THAT(faultsOf("<r><s><a>1</a><x/><b>z</b><y/></s><s><a>z</a></s></r>"),
                ElementsAre(StartsWith("error 80004005 1:15 "), StartsWith("error C00CE184 1:23 "),
                            StartsWith("error 80004005 1:27 "), StartsWith("error C00CE184 1:42 "),
                            StartsWith("error C00CE015 1:46 Falta o elemento obrigat\u00F3rio 'b'.")));
}

TEST_F(XmlReaderUnexpected, WhatItHoldsIsSilent) {
    EXPECT_THAT(faultsOf("<r><s><a>1</a><x q='1'>texto<y><z/>mais</y><a>z</a></x><b>1</b></s></r>"),
                ElementsAre(StartsWith("error 80004005 1:15 ")));
}

TEST_F(XmlReaderUnexpected, KnownElementInTheWrongPlaceIsStillCheckedInside) {
    EXPECT_THAT(faultsOf("<r><s><b>z</b><a>1</a></s></r>"),
                ElementsAre(StartsWith("error 80004005 1:7 "), StartsWith("error C00CE184 1:11 ")));
}

TEST_F(XmlReaderUnexpected, ElementInAValueIsOneFault) {
    // What is left of the value is not judged: it is not what was meant.
    EXPECT_THAT(faultsOf("<r><s><a>1<x>y</x></a><b>z<a/></b><c>z</c></s></r>"),
                ElementsAre(StartsWith("error 80004005 1:11 "), StartsWith("error 80004005 1:27 "),
                            StartsWith("error C00CE184 1:39 ")));
}

TEST_F(XmlReaderUnexpected, ElementsInAValueWithAttributesAreOneFaultEach) {
    useSchema("<xs:element name='r'><xs:complexType><xs:simpleContent><xs:extension base='xs:int'>"
              "<xs:attribute name='u'/></xs:extension></xs:simpleContent></xs:complexType></xs:element>");
    EXPECT_THAT(faultsOf("<r u='1'>1<x/>2<y/></r>"),
                ElementsAre(StartsWith("error 80004005 1:11 "), StartsWith("error 80004005 1:16 ")));
}

TEST_F(XmlReaderUnexpected, RootIsToldAndItsContentIsSilent) {
    EXPECT_THAT(read("<s><a>z</a><x/></s>").all,
                ElementsAre("document", "error 80004005 1:1 O elemento 's' n\u00E3o \u00E9 permitido aqui.",
                            "<s>", "<a>", "'z'", "</a> 1:8", "<x>", "</x> 1:12", "</s> 1:16", "end"));
}

TEST_F(XmlReaderUnexpected, ThousandsInOneSectionAreAllTold) {
    const XmlEvents events = read("<r><s><a>1</a>" + repeated("<x/>", 50'000) + "<b>z</b></s></r>");
    ASSERT_EQ(events.faults.size(), 50'001U);
    EXPECT_THAT(events.faults.front(), StartsWith("error 80004005 1:15 "));
    EXPECT_THAT(events.faults.back(), StartsWith("error C00CE184 1:200019 "));
}

TEST_F(XmlReaderUnexpected, ThousandsOfFaultySectionsAreAllTold) {
    EXPECT_EQ(faultsOf("<r>" + repeated("<s><b>1</b><a>x</a></s>", 20'000) + "</r>").size(), 40'000U);
}

TEST_F(XmlReaderUnexpected, SubstitutesStandForTheirHead) {
    useSchema("<xs:element name='r'><xs:complexType><xs:sequence>"
              "<xs:element ref='h' maxOccurs='2'/></xs:sequence></xs:complexType></xs:element>"
              "<xs:element name='h' type='xs:int'/>"
              "<xs:element name='i' type='xs:int' substitutionGroup='h'/>"
              "<xs:element name='j' type='xs:int'/>");
    EXPECT_THAT(faultsOf("<r><i>1</i><h>1</h></r>"), IsEmpty());
    EXPECT_THAT(faultsOf("<r><j>1</j><i>x</i></r>"),
                ElementsAre(StartsWith("error 80004005 1:4 "), StartsWith("error C00CE184 1:16 ")));
}

TEST_F(XmlReaderUnexpected, LargeGroupCountsAreCheckedAtTheParentsEnd) {
    useSchema("<xs:element name='r'><xs:complexType><xs:sequence maxOccurs='2100'>"
              "<xs:element name='a'/><xs:element name='b'/></xs:sequence></xs:complexType></xs:element>");
    EXPECT_THAT(faultsOf("<r>" + repeated("<a/><b/>", 2100) + "</r>"), IsEmpty());
    EXPECT_THAT(faultsOf("<r><a/><x/><b/><a/></r>"),
                ElementsAre(StartsWith("error 80004005 1:8 "), StartsWith("error C00CE015 1:20 ")));
    EXPECT_THAT(faultsOf("<r>" + repeated("<a/><b/>", 2101) + "</r>"),
                ElementsAre(StartsWith("error 80004005 1:16812 O elemento 'a'")));
}

} // namespace
} // namespace tv::test
