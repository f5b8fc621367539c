#include "tool/completion/completion_words.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temporary_tree.h"
#include "tool/command_line/command_line.h"
#include "tool/completion/completion_shapes.h"

namespace {

using test_support::TemporaryTree;
using tool::ArgumentShapes;
using tool::WordKind;
using Words = std::vector<std::string>;

// A command as they are made in files of their own, none of which is linked here.
class NoCommand : public tool::Command {
public:
    void Define(CLI::App& app) override
    {
        app.add_option("--fail", name_, "Which one")->type_name("NAME")->allow_extra_args(false);
        app.add_flag("--all", isAll_, "All of them");
    }
    tool::ExitStatus Run(tool::Session& /*session*/, Words /*words*/) override { return tool::EXIT_DONE; }

private:
    std::string name_;
    bool isAll_ = false;
};

const tool::CommandEntry
    kPlanLike({"planlike",
               "start|stop TOP NAME...|--all",
               "Like plan",
               {"", "", ""},
               tool::Section::LOOK,
               {"text", "json"},
               []() -> std::unique_ptr<tool::Command> { return std::make_unique<NoCommand>(); }});
const tool::CommandEntry
    kDiffLike({"difflike",
               "OLD NEW",
               "Like diff",
               {"", "", ""},
               tool::Section::LOOK,
               {"text"},
               []() -> std::unique_ptr<tool::Command> { return std::make_unique<NoCommand>(); }});

class CompletionWordsTest : public testing::Test {
protected:
    CompletionWordsTest()
    {
        const std::string apps = tree_.Write(
            "apps.yaml",
            "two words: {bin_path: /a}\n\"camera_<1-3>\": {bin_path: /b}\n\"a\\nb\": {bin_path: /c}\n");
        top_ = tree_.Write("top.yaml", "startup_path_list: ['" + apps + "']\n");
    }

    TemporaryTree tree_;
    std::string top_;
    const Words names_ = {"camera_<1-3>", "two words"}; // the one with a line break fits in no list of lines
};

TEST_F(CompletionWordsTest, WhatComesNextFollowsTheUsage)
{
    EXPECT_EQ((Words{"start", "stop"}), tool::NextWords({"planlike"}));
    EXPECT_EQ(std::nullopt, tool::NextWords({"planlike", "start"}));
    EXPECT_EQ(names_, tool::NextWords({"planlike", "start", top_}));
    EXPECT_EQ(names_, tool::NextWords({"planlike", "--all", "start", top_, "two words"}));
    EXPECT_EQ(std::nullopt, tool::NextWords({"difflike", "old.yaml"}));
    EXPECT_EQ(Words(), tool::NextWords({"difflike", "old.yaml", "new.yaml"}));
}

TEST_F(CompletionWordsTest, AnOptionTakesThePlaceOfTheTopLevelFile)
{
    EXPECT_EQ(names_, tool::NextWords({"planlike", "-c", top_, "start"}));
    EXPECT_EQ(names_, tool::NextWords({"--config=" + top_, "planlike", "start", "--"}));
}

TEST_F(CompletionWordsTest, ALineThatMakesNoSenseIsNotCompleted)
{
    EXPECT_EQ(Words(), tool::NextWords({}));
    EXPECT_EQ(Words(), tool::NextWords({"nosuch"}));
    EXPECT_EQ(Words(), tool::NextWords({"planlike", "--nosuch"}));
    EXPECT_EQ(Words(), tool::NextWords({"planlike", "--help"}));
    EXPECT_EQ(Words(), tool::NextWords({"planlike", "start", tree_.Path("nowhere.yaml")}));
}

TEST_F(CompletionWordsTest, NamesAreFoundBeforeTheOptionHasItsValue)
{
    EXPECT_EQ(names_, tool::ApplicationsOf({"planlike", "start", top_, "--fail"}));
    EXPECT_EQ(names_, tool::ApplicationsOf({"planlike", "start", top_}));
    EXPECT_EQ(Words(), tool::ApplicationsOf({"planlike", "start"}));
    EXPECT_EQ(Words(), tool::ApplicationsOf({}));
}

TEST(ArgumentShapesTest, AUsageIsTakenApart)
{
    const auto shapes = ArgumentShapes("[one|two] TOP [NAME]... RULE");

    ASSERT_EQ(4U, shapes.size());
    EXPECT_EQ((Words{"one", "two"}), shapes[0].choices);
    EXPECT_TRUE(shapes[1].isTop);
    EXPECT_EQ(WordKind::FILE, shapes[1].kind);
    EXPECT_FALSE(shapes[1].isRepeated);
    EXPECT_EQ(WordKind::APPLICATION, shapes[2].kind);
    EXPECT_TRUE(shapes[2].isRepeated);
    EXPECT_EQ(WordKind::CHOICE, shapes[3].kind);
    EXPECT_FALSE(shapes[3].choices.empty());
}

TEST(CompletionShapesTest, WhatAllCommandsHaveIsThereOnce)
{
    const tool::CompletionShapes shapes = tool::MakeCompletionShapes();

    ASSERT_EQ(2U, shapes.commands.size());
    Words own;
    for (const tool::OptionShape& option : shapes.commands[1].options) {
        own.push_back(option.Names().back());
    }
    EXPECT_EQ((Words{"--format"}), own); // the formats differ
    const auto isConfig = [](const tool::OptionShape& option) {
        return option.Names() == Words{"-c", "--config"};
    };
    const auto config = std::find_if(shapes.common.begin(), shapes.common.end(), isConfig);
    ASSERT_NE(shapes.common.end(), config);
    EXPECT_EQ(WordKind::FILE, config->kind);
    EXPECT_TRUE(config->NeedsValue());
}

} // namespace
