// The list as a tree, and where an entry goes in it.
#include "ui/views/tree_rows.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "ui/entries/block_moves.h"
#include "ui/entries/entry_placing.h"
#include "ui/views/open_nodes.h"

namespace verbatix::test {
namespace {

struct Line {
    unsigned key;
    const wchar_t* label;
    const wchar_t* text = L"text";
};

class TreeTest : public ::testing::Test {
  protected:
    void Fill(std::initializer_list<Line> lines) {
        SetLanguageTexts({}, {{38, L"Ctrl"}, {1280, L"none"}});
        list_.clear();
        for (const Line& line : lines) {
            AddEntry(list_, line.text, line.label, line.key, line.key ? 4 : 0, -1, 0);
        }
        Build();
    }
    void Build(bool grouped = true) {
        rows_.clear();
        for (const auto& [position, slot] : list_) rows_.push_back(position);
        tree_ = BuildTree(list_, rows_, grouped);
    }
    // Hotkeys in <>, groups in (), entries by name.
    std::wstring Show(int index = 0) const {
        const TreeNode& node = tree_.nodes[static_cast<std::size_t>(index)];
        if (node.kind == NodeKind::kEntry) return node.name;
        std::wstring inside;
        for (const int child : node.children) inside += (inside.empty() ? L"" : L" ") + Show(child);
        if (node.kind == NodeKind::kRoot) return inside;
        const bool hotkey = node.kind == NodeKind::kHotkey;
        return (hotkey ? L"<" : L"(") + node.name + L": " + inside + (hotkey ? L">" : L")");
    }
    int Named(std::wstring_view name) const {
        for (std::size_t index = 1; index < tree_.nodes.size(); ++index) {
            if (tree_.nodes[index].name == name) return static_cast<int>(index);
        }
        return -1;
    }
    int Position(std::wstring_view name) const {
        return tree_.nodes[static_cast<std::size_t>(Named(name))].position;
    }

    EntryList list_;
    std::vector<int> rows_;
    EntryTree tree_;
};

TEST_F(TreeTest, HotkeysThenGroupsThenEntries) {
    Fill({{'Q', L"G/H/one"},
          {0, L"loose"},
          {'A', L"two"},
          {'Q', L"three"},
          {'Q', L"G/four"},
          {'Q', L"G/H/five"},
          {'B', L"", L""},
          {'A', L"/ /G//six"},
          {'A', L"K/", L"shown text"},
          {'A', L"", L"no label"}});
    EXPECT_EQ(Show(),
              L"<Ctrl + A: two (G: six) (K: shown text) no label> "
              L"<Ctrl + Q: (G: (H: one five) four) three> <none: loose>");
    EXPECT_EQ(EntriesBelow(tree_, Named(L"Ctrl + Q")), (std::vector<int>{0, 5, 4, 3}));
    EXPECT_TRUE(EntriesBelow(tree_, -1).empty()) << "nothing is selected";
    Build(false);
    EXPECT_EQ(Show(),
              L"<Ctrl + A: two / /G//six K/ no label> <Ctrl + Q: G/H/one three G/four G/H/five> "
              L"<none: loose>");
}

TEST_F(TreeTest, AnEditOfATextKeepsTheShape) {
    Fill({{'Q', L"G/one"}, {'Q', L"two"}});
    const EntryTree before = tree_;
    SetLabel(list_, 0, L"G/uno");
    Build();
    EXPECT_TRUE(HaveSameShape(before, tree_));
    SetLabel(list_, 0, L"H/uno");
    Build();
    EXPECT_FALSE(HaveSameShape(before, tree_));
    EXPECT_EQ(FindNode(tree_, before.nodes[static_cast<std::size_t>(FindEntryNode(before, 1))]),
              FindEntryNode(tree_, 1));
}

TEST_F(TreeTest, ADropMovesGroupsHotkeysAndTakesPlaces) {
    const struct {
        const wchar_t* what;
        const wchar_t* onto;
        bool lowerHalf;
        const wchar_t* tree;  // null: not to be dropped there
    } cases[] = {
        {L"b", L"G", false, L"<Ctrl + Q: a (G: b c d)> <Ctrl + W: (G: e)>"},
        {L"c", L"Ctrl + W", false, L"<Ctrl + Q: a b (G: d)> <Ctrl + W: (G: c e)>"},
        {L"a", L"b", true, L"<Ctrl + Q: b a (G: c d)> <Ctrl + W: (G: e)>"},
        {L"d", L"b", false, L"<Ctrl + Q: a d b (G: c)> <Ctrl + W: (G: e)>"},
        {L"a", L"e", true, L"<Ctrl + Q: b (G: c d)> <Ctrl + W: (G: e a)>"},
        {L"c", L"G", false, nullptr},
        {L"a", L"Ctrl + Q", false, nullptr},
        {L"a", L"a", false, nullptr},
    };
    for (const auto& row : cases) {
        Fill({{'Q', L"a"}, {'Q', L"b"}, {'Q', L"G/c"}, {'Q', L"G/d"}, {'W', L"G/e"}});
        const int position = Position(row.what);
        const auto drop = DropOnNode(tree_, list_, position, Named(row.onto), row.lowerHalf);
        ASSERT_EQ(drop.has_value(), row.tree != nullptr) << ::testing::PrintToString(row.what);
        if (!drop) continue;
        const std::optional<int> landing = PlaceEntry(list_, position, *drop);
        Build();
        EXPECT_EQ(Show(), row.tree);
        ASSERT_TRUE(landing);
        EXPECT_EQ(Position(row.what), *landing);
    }
}

TEST_F(TreeTest, SeveralGoTogetherAndAGroupWithAllInIt) {
    const std::wstring kBefore = L"<Ctrl + Q: a b (G: c d (H: e))> <Ctrl + W: (G: f)>";
    const struct {
        std::vector<const wchar_t*> what;
        const wchar_t* onto;
        bool lowerHalf;
        const wchar_t* tree;  // null: not to be dropped there
    } cases[] = {
        {{L"a", L"c"}, L"f", false, L"<Ctrl + Q: b (G: d (H: e))> <Ctrl + W: (G: a c f)>"},
        {{L"c", L"b"}, L"a", false, L"<Ctrl + Q: c b a (G: d (H: e))> <Ctrl + W: (G: f)>"},
        {{L"H"}, L"Ctrl + Q", false, L"<Ctrl + Q: a b (G: c d) (H: e)> <Ctrl + W: (G: f)>"},
        {{L"G"}, L"Ctrl + W", false, L"<Ctrl + Q: a b> <Ctrl + W: (G: c d (H: e) f)>"},
        {{L"Ctrl + W"}, L"H", false, L"<Ctrl + Q: a b (G: c d (H: e (G: f)))>"},
        {{L"a", L"G", L"d"}, L"b", true, L"<Ctrl + Q: b a (G: c d (H: e))> <Ctrl + W: (G: f)>"},
        {{L"a", L"b"}, L"Ctrl + Q", false, nullptr},
        {{L"a", L"G"}, L"H", false, nullptr},
        {{L"Ctrl + Q"}, L"a", false, nullptr},
    };
    for (const auto& row : cases) {
        Fill({{'Q', L"a"}, {'Q', L"b"}, {'Q', L"G/c"}, {'Q', L"G/d"}, {'Q', L"G/H/e"}, {'W', L"G/f"}});
        ASSERT_EQ(Show(), kBefore);
        std::vector<int> nodes;
        for (const wchar_t* name : row.what) nodes.push_back(Named(name));
        const auto drop = DropManyOnNode(tree_, nodes, Named(row.onto), row.lowerHalf);
        ASSERT_EQ(drop.has_value(), row.tree != nullptr) << ::testing::PrintToString(row.onto);
        if (!drop) continue;
        const std::vector<Moved> moved = MovedNodes(tree_, nodes);
        const std::wstring first = list_.at(moved.front().position).current.text;
        const auto landings = PlaceMany(list_, moved, *drop);
        ASSERT_TRUE(landings);
        EXPECT_EQ(list_.at(landings->front()).current.text, first);
        Build();
        EXPECT_EQ(Show(), row.tree);
    }
    // "/H/e" is two longer than "/a", which alone would have fitted.
    Destination tooLong;
    tooLong.path = std::wstring(252, L'x');
    EXPECT_FALSE(PlaceMany(list_, MovedNodes(tree_, {Named(L"a"), Named(L"H")}), tooLong));
    EXPECT_STREQ(list_.at(0).current.label, L"a");
}

TEST_F(TreeTest, SeveralStepWithoutPassingEachOther) {
    Fill({{'Q', L"a"}, {'Q', L"b"}, {'Q', L"G/c"}, {'Q', L"G/d"}, {'Q', L"e"}});
    const struct {
        std::vector<const wchar_t*> what;
        bool down;
        const wchar_t* tree;
    } steps[] = {{{L"b", L"e"}, false, L"b a e (G: c d)"}, {{L"b", L"a"}, false, L"b a e (G: c d)"},
                 {{L"a", L"e"}, true, L"b (G: c d) a e"},  {{L"d", L"G"}, false, L"(G: c d) b a e"},
                 {{L"G"}, true, L"b (G: c d) a e"},        {{L"d", L"b"}, true, L"(G: c d) b a e"},
                 {{L"d", L"a"}, false, L"(G: d c) a b e"}};
    for (const auto& [what, down, tree] : steps) {
        std::vector<int> nodes;
        nodes.reserve(what.size());
        for (const wchar_t* name : what) nodes.push_back(Named(name));
        Rearrange(list_, StepManyInTree(tree_, nodes, down));
        Build();
        EXPECT_EQ(Show(), L"<Ctrl + Q: " + std::wstring(tree) + L">");
    }
    const Rearrangement order = StepManyInRows({3, 5, 8, 9}, {9, 3, 8}, false);
    EXPECT_EQ(order.sources, (std::vector<int>{3, 8, 9, 5}));
    EXPECT_EQ(LandingsOf(order, {9, 3, 5, 77}), (std::vector<int>{8, 3, 9, 77}));
    EXPECT_EQ(DropManyInGap({1, 2, 3}, {2, 3}, 2)->reference, 1);
    EXPECT_TRUE(DropManyInGap({1, 2, 3}, {2, 3}, 2)->after);
    EXPECT_FALSE(DropManyInGap({1, 2}, {1, 2}, 1));
}

TEST_F(TreeTest, StepsGoPastEntriesAndWholeGroups) {
    Fill({{'Q', L"a"}, {'W', L"x"}, {'Q', L"G/c"}, {'Q', L"G/d"}, {'Q', L"b"}});
    const std::tuple<const wchar_t*, bool, const wchar_t*> steps[] = {
        {L"a", true, L"(G: c d) a b"},  {L"a", true, L"(G: c d) b a"}, {L"a", true, L""},
        {L"b", false, L"b (G: c d) a"}, {L"c", true, L"b (G: d c) a"}, {L"d", false, L""}};
    for (const auto& [what, down, tree] : steps) {
        const int position = Position(what);
        const auto step = StepInTree(tree_, list_, position, down);
        ASSERT_EQ(step.has_value(), *tree != L'\0') << ::testing::PrintToString(what);
        if (!step) continue;
        PlaceEntry(list_, position, *step);
        Build();
        EXPECT_EQ(Show(), L"<Ctrl + Q: " + std::wstring(tree) + L"> <Ctrl + W: x>");
    }
}

TEST_F(TreeTest, ListGapsAndSteps) {
    Fill({{'Q', L"a"}, {'W', L"", L""}, {'Q', L"b"}, {'Q', L"c"}});
    rows_ = {0, 2, 3};
    const struct {
        int position;
        int gap;
        const wchar_t* after;  // texts in list order, the deleted one as a dash; null: no drop
    } cases[] = {{0, 2, L"-bac"}, {3, 0, L"ca-b"},  {0, 1, nullptr},
                 {2, 4, nullptr}, {2, -1, nullptr}, {1, 0, nullptr}};
    for (const auto& row : cases) {
        EntryList list = list_;
        const auto drop = DropInGap(rows_, list, row.position, row.gap);
        ASSERT_EQ(drop.has_value(), row.after != nullptr) << row.position << " " << row.gap;
        if (!drop) continue;
        PlaceEntry(list, row.position, *drop);
        std::wstring labels;
        for (const auto& [position, slot] : list) {
            labels += *slot.current.label ? slot.current.label : L"-";
        }
        EXPECT_EQ(labels, row.after);
    }
    EXPECT_EQ(StepInRows(rows_, list_, 2, true)->reference, 3);
    EXPECT_TRUE(StepInRows(rows_, list_, 2, true)->after);
    EXPECT_EQ(StepInRows(rows_, list_, 2, false)->reference, 0);
    EXPECT_FALSE(StepInRows(rows_, list_, 0, false) || StepInRows(rows_, list_, 3, true));
}

TEST_F(TreeTest, AGroupIsRenamedInAllItsLabelsOrInNone) {
    Fill({{'Q', L"G/H/a"}, {'Q', L"G/b"}, {'W', L"G/c"}, {'Q', L"Gx/d"}, {'Q', L"H/e"}});
    const TreeNode group = tree_.nodes[static_cast<std::size_t>(Named(L"G"))];
    const TreeNode inner = tree_.nodes[static_cast<std::size_t>(Named(L"H"))];
    OpenNodes open;
    SetAllOpen(open, tree_);
    ASSERT_TRUE(RenameGroup(list_, group, L"New"));
    Build();
    RenameOpen(open, group, tree_.nodes[static_cast<std::size_t>(Named(L"New"))]);
    for (const wchar_t* name : {L"New", L"H", L"Gx"})
        EXPECT_TRUE(IsOpen(open, tree_.nodes[static_cast<std::size_t>(Named(name))]));
    EXPECT_FALSE(IsOpen(open, group));
    OpenNodes moved = open;
    TreeNode hotkey = tree_.nodes[1];
    hotkey.key = 'T';
    RenameOpen(moved, tree_.nodes[1], hotkey);
    EXPECT_TRUE(IsOpen(moved, hotkey));
    EXPECT_FALSE(IsOpen(moved, tree_.nodes[1]));
    EXPECT_EQ(Show(), L"<Ctrl + Q: (New: (H: a) b) (Gx: d) (H: e)> <Ctrl + W: (G: c)>");
    // Its path is another one now, so nothing is found under the old one.
    ASSERT_TRUE(RenameGroup(list_, inner, L"x"));
    EXPECT_STREQ(list_.at(0).current.label, L"New/H/a");
    const TreeNode renamed = tree_.nodes[static_cast<std::size_t>(Named(L"New"))];
    EXPECT_TRUE(RenameGroup(list_, renamed, L"  "));
    // "…/H/a" is four longer than the name; the other entry alone would have fitted.
    EXPECT_FALSE(RenameGroup(list_, renamed, std::wstring(252, L'x')));
    EXPECT_STREQ(list_.at(1).current.label, L"New/b");
    EXPECT_TRUE(RenameGroup(list_, renamed, std::wstring(251, L'x')));
    EXPECT_EQ(std::wstring_view(list_.at(0).current.label).size(), 255U);
    EXPECT_EQ(GroupsOn(list_, 'W', 4), (std::vector<std::wstring>{L"G"}));
}

}  // namespace
}  // namespace verbatix::test
