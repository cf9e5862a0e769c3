#include "validation/clsStackXML.h"
#include "model/LayoutXml.h"
#include "model/clsBoleto.h"
#include "model/clsSecao.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <functional>

namespace tv {
namespace {

using test::BoletoXml;
using test::CampoXml;
using test::SecaoXml;
using test::tables;

/// A layout "posicao" with a section "fundo" and its field "cod", and the three nodes on the way down.
class StackXMLTest : public testing::Test {
protected:
    void SetUp() override {
        boleto.setEstrutura(BoletoXml{.inside = SecaoXml{.inside = CampoXml().xml()}.xml()}.xml(), tables(),
                            "");
        secao = &boleto.GetChild("fundo");
        campo = &secao->GetChild("cod");
    }
    void push(const LayoutNode* node) { pilha.push(node); }

    clsBoleto boleto;
    const LayoutNode* secao = nullptr;
    const LayoutNode* campo = nullptr;
    clsStackXML pilha;
};

void expectError(const std::function<void()>& call, const char* description) {
    try {
        call();
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), -1);
        EXPECT_EQ(error.description(), description);
    }
}

TEST_F(StackXMLTest, NewStackIsEmpty) {
    EXPECT_TRUE(pilha.isEmpty());
    EXPECT_EQ(pilha.lenght(), 0);
    EXPECT_EQ(pilha.getPath(), "");
    EXPECT_EQ(pilha.top(), nullptr);
}

TEST_F(StackXMLTest, PushTakesTheNodeAndEmptiesTheCallersReference) {
    const LayoutNode* node = &boleto;
    EXPECT_TRUE(pilha.push(node));
    EXPECT_EQ(node, nullptr);
    EXPECT_FALSE(pilha.isEmpty());
    EXPECT_EQ(pilha.lenght(), 1);
    EXPECT_EQ(&pilha.peek(), &boleto);
}

TEST_F(StackXMLTest, BottomIsElementOneAndTopIsTheLast) {
    push(&boleto);
    push(secao);
    push(campo);
    EXPECT_EQ(pilha.lenght(), 3);
    EXPECT_EQ(&pilha.getElement(1), &boleto);
    EXPECT_EQ(&pilha.getElement(2), secao);
    EXPECT_EQ(&pilha.getElement(3), campo);
    EXPECT_EQ(&pilha.getLastElement(), campo);
    EXPECT_EQ(&pilha.peek(), campo);
    EXPECT_EQ(pilha.top(), campo);
}

TEST_F(StackXMLTest, ElementOutsideOfTheCountIsOutOfBounds) {
    for (const std::int32_t i : {0, 1, -1}) {
        expectError([&] { static_cast<void>(pilha.getElement(i)); }, "Array out of Bounds");
    }
    push(&boleto);
    push(secao);
    for (const std::int32_t i : {-1, 0, 3, 1'000'000}) {
        expectError([&] { static_cast<void>(pilha.getElement(i)); }, "Array out of Bounds");
    }
}

TEST_F(StackXMLTest, EmptyStackHasNoTop) {
    expectError([&] { static_cast<void>(pilha.getLastElement()); }, "Array is Empty");
    expectError([&] { static_cast<void>(pilha.peek()); }, "Array is Empty");
    push(&boleto);
    pilha.pop();
    expectError([&] { static_cast<void>(pilha.peek()); }, "Array is Empty");
}

TEST_F(StackXMLTest, PopDropsTheTopAndTellsWhenThereWasNone) {
    push(&boleto);
    push(secao);
    EXPECT_TRUE(pilha.pop());
    EXPECT_EQ(&pilha.peek(), &boleto);
    EXPECT_TRUE(pilha.pop());
    EXPECT_FALSE(pilha.pop());
    EXPECT_TRUE(pilha.isEmpty());
}

TEST_F(StackXMLTest, PopAllAndDestroyEmptyTheStack) {
    for (const auto drop : {&clsStackXML::popAll, &clsStackXML::destroy}) {
        push(&boleto);
        push(secao);
        (pilha.*drop)();
        EXPECT_TRUE(pilha.isEmpty());
        (pilha.*drop)();
        EXPECT_EQ(pilha.lenght(), 0);
    }
}

TEST_F(StackXMLTest, PathJoinsTheTagsFromTheRootToTheTop) {
    push(&boleto);
    EXPECT_EQ(pilha.getPath(), "posicao");
    push(secao);
    EXPECT_EQ(pilha.getPath(), "posicao.fundo");
    push(campo);
    EXPECT_EQ(pilha.getPath(), "posicao.fundo.cod");
    pilha.pop();
    EXPECT_EQ(pilha.getPath(), "posicao.fundo");
}

} // namespace
} // namespace tv
