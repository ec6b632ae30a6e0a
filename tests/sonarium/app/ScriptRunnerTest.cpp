// A script line that cannot be done says what was wrong, changes nothing, and stops the run at
// that line; the words of a line split as a user writes them.

#include "SessionFixture.h"

#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/core/host/ProjectBuilder.h"

#include <sstream>

namespace
{
class ScriptRun : public SessionTest
{
protected:
    std::wostringstream out;
    sn::ScriptRunner runner{session, out};
};
} // namespace

TEST_F(ScriptRun, EachBadLineSaysWhatWasWrongAndChangesNothing)
{
    const std::vector<std::wstring> before = sn::TreeLines(Tree());
    const std::pair<const wchar_t*, const wchar_t*> bad[] = {
        {L"frobnicate", L"unknown command \"frobnicate\""},
        {L"click \"AudioObjects/Characters", L"a quote is not closed"},
        {L"key Sideways", L"unknown key \"Sideways\""},
        {L"click AudioObjects/Nowhere", L"no object at \"AudioObjects/Nowhere\""},
        {L"click AudioObjects/Characters/Player",
         L"\"AudioObjects/Characters/Player\" has no row in the tree (is its parent collapsed?)"},
        {L"pane Extra Nonsense", L"unknown category \"Nonsense\""},
        {L"pane Audio Music", L"a pane named \"Audio\" is already open"},
        {L"use Nowhere", L"no pane named \"Nowhere\""},
        {L"answer message Maybe", L"unknown button \"Maybe\""},
        {L"answer unload later", L"unknown decision \"later\" (save, cancel or discard)"},
        {L"advance soon", L"not a number of milliseconds: \"soon\""},
        {L"advance 99999999999999999999", L"not a number of milliseconds: \"99999999999999999999\""},
        {L"advance", L"usage: advance MILLISECONDS"},
        {L"use", L"usage: use NAME"},
        {L"close-pane Nowhere", L"no pane named \"Nowhere\""},
        {L"type Hello World", L"unexpected word \"World\" (usage: type TEXT)"},
        {L"answer name My Unit", L"unexpected word \"Unit\""},
        {L"answer message OK tick", L"unexpected word \"tick\": only \"ticked\" may follow the button"},
        {L"host rename AudioObjects/World New Name", L"unexpected word \"Name\""},
        {L"host unlock", L"the UI is not locked"},
        {L"click AudioObjects/World AudioObjects/Characters",
         L"unexpected word \"AudioObjects/Characters\" (usage: "
         L"click ROW [ctrl] [shift] [alt])"},
        {L"print tree Audio twice", L"unexpected word \"twice\""},
        {L"host create AudioObjects/Characters Gizmo Thing", L"unknown object type \"Gizmo\""},
        {L"host platform Toaster", L"the project has no platform named \"Toaster\""},
        {L"host undo", L"there is nothing to undo"},
        {L"type Hello", L"no label editor is open"},
        {L"drop below no-such-file.wav", L"no file at \"no-such-file.wav\""},
        {L"drop below", L"usage: drop ROW|below FILE... [ctrl] [shift] [alt] [right]"},
        {L"drag AudioObjects/World", L"usage: drag ROW ROW|below [PANE] [ctrl] [shift] [alt] [right]"},
        {L"drag AudioObjects/World below Nowhere", L"no pane named \"Nowhere\""},
        {L"send shout",
         L"usage: send cut|copy|paste|delete|rename|can-cut|can-copy|can-paste|key:NAME [PANE]"},
        {L"toolbar Spaceship", L"the pane Audio has no \"Spaceship\" button"},
        {L"toolbar \"Random Container\"", L"the \"Random Container\" button (7) is disabled"},
        {L"toolbar \"Random Container\" ctrl", L"only \"shift\" may follow a toolbar button"},
        {L"host preference Loudness on", L"unknown preference \"Loudness\" (UseActionNameForEvent, "
                                         L"EventActionNamePrefix, ModifyEventNameCase, EventNameCaseAllLower, "
                                         L"InspectOnSingleClick)"},
        {L"host preference ModifyEventNameCase maybe", L"a preference is \"on\" or \"off\", not \"maybe\""},
        {L"print object AudioObjects/Nowhere", L"no object at \"AudioObjects/Nowhere\""},
        {L"print object", L"usage: print object PATH"},
        {L"print toolbar Nowhere", L"no pane named \"Nowhere\""},
    };
    for (auto [line, expected] : bad)
    {
        std::wstring error;
        EXPECT_FALSE(runner.RunLine(line, error)) << line;
        EXPECT_EQ(error, expected) << line;
    }
    EXPECT_EQ(sn::TreeLines(Tree()), before);
    EXPECT_EQ(session.Panes().size(), 2u);
    EXPECT_TRUE(out.str().empty()) << "a failed line prints nothing";
}

TEST_F(ScriptRun, TheFirstBadLineStopsTheRunAndNamesItsLine)
{
    std::istringstream script("toggle AudioObjects/Characters\n"
                              "# a comment, then a blank line\n"
                              "\n"
                              "click AudioObjects/Characters/Player ctrl shift\n"
                              "frobnicate now\n"
                              "host create AudioObjects/Characters/Player/Player SoundSFX Late\n");
    std::string error;
    EXPECT_FALSE(runner.Run(script, "walk.sonscript", error));
    EXPECT_EQ(error, "walk.sonscript:5: unknown command \"frobnicate\"");
    EXPECT_EQ(sn::SelectionLines(Tree()), (std::vector<std::wstring>{L"* AudioObjects/Characters/Player"}))
        << "the lines before it ran";
    EXPECT_EQ(sn::FindByPath(*session.GetProject(), L"AudioObjects/Characters/Player/Player/Late"), nullptr)
        << "the line after it did not";
}

TEST_F(ScriptRun, AnAnswerNothingAskedForFailsTheRunAtItsEnd)
{
    std::istringstream script("answer message OK\nmenu Delete\nclick AudioObjects/World\n");
    std::string error;
    EXPECT_FALSE(runner.Run(script, "eager.sonscript", error));
    EXPECT_EQ(error,
              "eager.sonscript:3: the script ended with 1 dialog answer(s) and 1 menu choice(s) that nothing "
              "asked for");

    // Printing the dialogs shown so far does not forgive an answer still waiting.
    std::istringstream printed("answer message OK\nprint dialogs\n");
    sn::ScriptRunner fresh(session, out);
    EXPECT_FALSE(fresh.Run(printed, "printed.sonscript", error));
    EXPECT_EQ(error, "printed.sonscript:2: the script ended with 1 dialog answer(s) and 0 menu choice(s) that "
                     "nothing asked for");
}

TEST(ScriptWords, QuotesEscapesCommentsAndModifiers)
{
    using Words = std::vector<std::wstring>;
    EXPECT_EQ(sn::SplitScriptLine(L"  click\t\"Audio Objects/Rain \\\"Heavy\\\"\" ctrl # the rain"),
              (Words{L"click", L"Audio Objects/Rain \"Heavy\"", L"ctrl"}));
    EXPECT_EQ(sn::SplitScriptLine(L"type \"\" a#b \"C:\\\\x\"\r"), (Words{L"type", L"", L"a#b", L"C:\\x"}))
        << "an empty quoted word stays; # inside a word is no comment";
    EXPECT_EQ(sn::SplitScriptLine(L"# only a comment"), Words{});
    EXPECT_FALSE(sn::SplitScriptLine(L"click \"Audio Objects").has_value());

    Words words{L"ctrl", L"Row", L"shift", L"alt", L"right"};
    EXPECT_EQ(sn::TakeModifiers(words), unsigned(MK_SHIFT | MK_ALT))
        << "the command word itself is never a modifier";
    EXPECT_EQ(words, (Words{L"ctrl", L"Row", L"right"}));
}
