#include "logging/clsStack.h"
#include "logging/LogFolder.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

namespace level = library::level;
using test::startLogger;
using test::TemporaryFolder;

struct StackTest : ::testing::Test {
    TemporaryFolder folder;
};

TEST_F(StackTest, HoldsNamesFromPositionOneUp) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    clsStack& stack = logger->callStack;
    EXPECT_TRUE(stack.EOF_());
    EXPECT_EQ(stack.lenght(), 0);
    EXPECT_TRUE(stack.push("a.b"));
    EXPECT_TRUE(stack.push("c.d"));
    EXPECT_FALSE(stack.EOF_());
    EXPECT_EQ(stack.lenght(), 2);
    EXPECT_EQ(stack.getElement(1), "a.b");
    EXPECT_EQ(stack.getElement(2), "c.d");
    EXPECT_EQ(stack.getLastElement(), "c.d");
    EXPECT_TRUE(stack.pop());
    EXPECT_EQ(stack.getLastElement(), "a.b");
    EXPECT_TRUE(stack.pop());
    EXPECT_TRUE(stack.EOF_());
}

TEST_F(StackTest, PositionsOutsideRaiseErrorMinusOne) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    logger->callStack.push("a.b");
    for (const std::int32_t index : {-1, 0, 2}) {
        try {
            logger->callStack.getElement(index);
            ADD_FAILURE() << "no error at " << index;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), -1);
            EXPECT_EQ(error.description(), "Array out of Bounds");
        }
    }
}

TEST_F(StackTest, TopOfAnEmptyStackRaisesErrorMinusOne) {
    const clsStack stack;
    try {
        stack.getLastElement();
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), -1);
        EXPECT_EQ(error.description(), "Array is Empty");
    }
}

TEST_F(StackTest, PopWithNothingPushedIsFalseAndWritesNothing) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    const std::string before = folder.read(std::filesystem::path(logger->getFilename()).filename().string());
    EXPECT_FALSE(before.empty());
    EXPECT_FALSE(logger->callStack.pop());
    EXPECT_EQ(folder.read(std::filesystem::path(logger->getFilename()).filename().string()), before);
}

TEST_F(StackTest, StaysEmptyAtLevelOff) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::off);
    EXPECT_FALSE(logger->callStack.push("a.b"));
    EXPECT_TRUE(logger->callStack.EOF_());
    EXPECT_FALSE(logger->callStack.pop());
}

TEST_F(StackTest, PopAllEmptiesUnlessTheLevelIsOff) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::info);
    logger->callStack.push("a.b");
    logger->callStack.push("c.d");
    logger->setLevel(level::off);
    logger->callStack.popAll();
    EXPECT_EQ(logger->callStack.lenght(), 2);
    logger->setLevel(level::info);
    logger->callStack.popAll();
    EXPECT_TRUE(logger->callStack.EOF_());
}

TEST_F(StackTest, WithoutALoggerNothingIsHeld) {
    clsStack stack;
    EXPECT_FALSE(stack.push("a.b"));
    EXPECT_FALSE(stack.pop());
    stack.popAll();
    EXPECT_TRUE(stack.EOF_());
}

TEST_F(StackTest, WithoutAStreamNamesAreHeldButNothingSucceeds) {
    clsLogger logger;
    logger.setLevel(level::all);
    EXPECT_FALSE(logger.callStack.push("a.b"));
    EXPECT_EQ(logger.callStack.lenght(), 1);
    EXPECT_FALSE(logger.callStack.pop());
    EXPECT_EQ(logger.callStack.lenght(), 1);
    logger.callStack.popAll();
    EXPECT_TRUE(logger.callStack.EOF_());
}

} // namespace
} // namespace tv
