#include "layers/layers_support.h"

#include <gtest/gtest.h>

namespace Layers {
namespace {

struct TreeCase {
    const char* name;
    std::vector<std::string_view> files;
    std::string tree;
};

void PrintTo(const TreeCase& c, std::ostream* out) {
    *out << c.name;
}

class TreeTest : public testing::TestWithParam<TreeCase> {};

TEST_P(TreeTest, FilesMakeTheTree) {
    const LogCapture log;
    StyleTree tree;
    tree.load(GetParam().files);
    EXPECT_EQ(show(tree.root), GetParam().tree);
}

const TreeCase pouring[] = {
    {"LiteralsAndLinks",
     {"a: 1\nb: true\nc: \"x\"\nd: #abc\ne: L/G.f\n"},
     "a = 1\nb = true\nc = \"x\"\nd = \"#aabbccff\"\ne -> L/G.f\n"},
    {"LaterAssignmentWins",
     {"a: 1\na: L\nb: L\nb: 2\n", "c: 1\n", "c: 3\n"},
     "a -> L\nb = 2\nc = 3\n"},
    {"BodiesOfOneLayerAddUp",
     {"A:\n  x: 1\nA:\n  y: 2\n", "A:\n  x: 3\n"},
     "A:\n  x = 3\n  y = 2\n"},
    {"LayerAndAttributeOfOneName", {"A:\n  x: 1\nA: 2\n"}, "A:\n  x = 1\nA = 2\n"},
    {"TraversalMakesLayers",
     {"A/B/C:\n  x: 1\nA/B/y: 2\nA/G.z: 3\n"},
     "A:\n  B:\n    C:\n      x = 1\n    y = 2\n  G.z = 3\n"},
    {"ExpansionOrder",
     {"(Top, Bottom) (Left, Right): 1\n"},
     "Top Left = 1\nTop Right = 1\nBottom Left = 1\nBottom Right = 1\n"},
    {"TraversalSlowestNameFastest",
     {"(A,B)/(G,H).(x,y): 1\n"},
     "A:\n  G.x = 1\n  G.y = 1\n  H.x = 1\n  H.y = 1\n"
     "B:\n  G.x = 1\n  G.y = 1\n  H.x = 1\n  H.y = 1\n"},
    {"EmptyAlternative",
     {"(, Far) Left: 1\n(, B): 2\n(): 3\n()/x: 4\n"},
     "Left = 1\nFar Left = 1\nB = 2\n"},
    {"ExpandedLayersShareTheBody",
     {"(A, B):\n  C:\n    x: 1\n"},
     "A:\n  C:\n    x = 1\nB:\n  C:\n    x = 1\n"},
    {"SameNameTwice", {"(, A) (A, A A): 1\n"}, "A = 1\nA A = 1\nA A A = 1\n"},
    {"GroupSet",
     {"(L, M)/(G, H).\n  x: 1 @S: 2\n  y: 3\n"},
     "L:\n  G.x = 1\n    S = 2\n  G.y = 3\n  H.x = 1\n    S = 2\n  H.y = 3\n"
     "M:\n  G.x = 1\n    S = 2\n  G.y = 3\n  H.x = 1\n    S = 2\n  H.y = 3\n"},
    {"StateNamesAreSorted",
     {"a: 1 @B & A: 2 @A & B: 3 @C & A & C: 4\n"},
     "a = 1\n  A:B = 3\n  A:C:C = 4\n"},
    {"StateSetAboveTheAttribute",
     {"@S:\n  a: 2\n  G.\n    b: 3\na: 1\n"},
     "a = 1\n  S = 2\nG.b = none\n  S = 3\n"},
    {"InlineStateBeatsStateSets", {"@S:\n  a: 1\na: 0 @S: 2\n@S:\n  a: 3\n"}, "a = 0\n  S = 2\n"},
    {"LaterStateSetWins", {"@S:\n  a: 1\n@S:\n  a: 2\n"}, "a = none\n  S = 2\n"},
    {"AcrossFilesTheLaterWins", {"a: 0 @S: 1\n", "@S:\n  a: 2\n"}, "a = 0\n  S = 2\n"},
    {"StatementsApplyInSourceOrder",
     {"A:\n  x: 1\nA/x: 2\nA:\n  x: 3\nB/G.y: 1\nB/G.\n  y: 2\nB:\n  G.y: 3\n"},
     "A:\n  x = 3\nB:\n  G.y = 3\n"},
    {"NoBytesAreFolded", {"a: 1\nA: 2\n"}, "a = 1\nA = 2\n"},
};

INSTANTIATE_TEST_SUITE_P(Pouring, TreeTest, testing::ValuesIn(pouring),
                         [](const auto& test) { return std::string(test.param.name); });

const TreeCase inheritance[] = {
    {"CopiesWhatIsMissing",
     {"B:\n  x: 1\n  y: 2 @S: 3\n  C:\n    z: 4\nD << B:\n  x: 5\n"},
     "B:\n  x = 1\n  y = 2\n    S = 3\n  C:\n    z = 4\n"
     "D << B:\n  x = 5\n  y = 2\n    S = 3\n  C:\n    z = 4\n"},
    {"BaseMayComeLater", {"D << B\n", "B:\n  x: 1\n"}, "D << B:\n  x = 1\nB:\n  x = 1\n"},
    {"ChainsGoBaseFirst",
     {"C << B\nB << A\nA:\n  x: 1\n"},
     "C << B:\n  x = 1\nB << A:\n  x = 1\nA:\n  x = 1\n"},
    {"ChildrenOfOneNameUnite",
     {"B:\n  C:\n    x: 1\n    E:\n      w: 0\nD << B:\n  C:\n    y: 2\n    E:\n      v: 9\n"},
     "B:\n  C:\n    x = 1\n    E:\n      w = 0\n"
     "D << B:\n  C:\n    y = 2\n    E:\n      v = 9\n      w = 0\n    x = 1\n"},
    {"OwnLinkIsKept",
     {"L: 7\nB:\n  x: 1\n  y: L\nD << B:\n  x: L\n  y: 2\n"},
     "L = 7\nB:\n  x = 1\n  y -> L\nD << B:\n  x -> L\n  y = 2\n"},
    {"OwnStateStillGetsTheValue",
     {"B:\n  x: 1 @T: 2\n  y: L @T: 5\nD << B:\n  @S:\n    x: 3\n    y: 4\n"},
     "B:\n  x = 1\n    T = 2\n  y -> L\n    T = 5\n"
     "D << B:\n  x = 1\n    S = 3\n    T = 2\n  y -> L\n    S = 4\n    T = 5\n"},
    {"OwnValueCopiesNoStates",
     {"B:\n  x: 1 @T: 2\nD << B:\n  x: 3\n"},
     "B:\n  x = 1\n    T = 2\nD << B:\n  x = 3\n"},
    {"StatesOfDeeperBases",
     {"A:\n  x: 1 @S: 2\nB << A:\n  x: 3 @T: 4\nD << B\n"},
     "A:\n  x = 1\n    S = 2\nB << A:\n  x = 3\n    T = 4\nD << B:\n  x = 3\n    T = 4\n    S = "
     "2\n"},
    {"BaseOrderOfChildLayers",
     {"B:\n  P\n  Q\n  R\nD << B:\n  Z\n  a: 1\n  R\n  Q\n"},
     "B:\n  P:\n  Q:\n  R:\nD << B:\n  P:\n  a = 1\n  Q:\n  R:\n  Z:\n"},
    {"ClonesKeepTheirBase",
     {"K:\n  k: 1\nB:\n  C << K\nD << B\n"},
     "K:\n  k = 1\nB:\n  C << K:\n    k = 1\nD << B:\n  C << K:\n    k = 1\n"},
    {"RestatedChildLosesItsBase",
     {"K\nB:\n  C << K\nD << B:\n  C:\n    x: 1\n"},
     "K:\nB:\n  C << K:\nD << B:\n  C:\n    x = 1\n"},
    {"TopLayerBeforeRoot",
     {"T:\n  x: 1\nApp:\n  Win:\n    T:\n      x: 2\n    In:\n      D << T\n      E << "
      "App/Win/T\n"},
     "T:\n  x = 1\nApp:\n  Win:\n    T:\n      x = 2\n    In:\n      D << T:\n        x = 2\n      "
     "E << T:\n        x = 2\n"},
    {"BaseInsideTheLayer",
     {"X << X/C:\n  C:\n    c: 1\n    C:\n      d: 2\n"},
     "X << C:\n  C:\n    c = 1\n    C:\n      d = 2\n    d = 2\n  c = 1\n"},
    {"ItselfAndParentsAreRefused",
     {"A << A:\n  x: 1\nP:\n  C << P:\n    y: 2\n    E << P/C\n"},
     "A:\n  x = 1\nP:\n  C:\n    y = 2\n    E:\n"},
    {"LoopEndsAtTheLayerThatClosesIt",
     {"A << B:\n  a: 1\nB << A:\n  b: 2\n"},
     "A << B:\n  a = 1\n  b = 2\nB:\n  b = 2\n"},
    {"LoopThroughAChildIsCut",
     {"X:\n  C << Y\nY << X:\n  y: 1\n"},
     "X:\n  C << Y:\n    y = 1\nY:\n  y = 1\n"},
    {"MissingBaseIsSilent", {"A << Nowhere:\n  x: 1\n"}, "A:\n  x = 1\n"},
    {"LastBaseIsTaken",
     {"A << B\nB:\n  b: 1\nC:\n  c: 1\n", "A << C\n"},
     "A << C:\n  c = 1\nB:\n  b = 1\nC:\n  c = 1\n"},
};

INSTANTIATE_TEST_SUITE_P(Inheritance, TreeTest, testing::ValuesIn(inheritance),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Inheritance, ALinkedLayerIsNotLinkedAgain) {
    StyleTree tree("B:\n  x: 1\nD << B\n");
    tree.load({"B:\n  y: 2\nD:\n  N << B\nE << D\n"});
    EXPECT_EQ(show(tree.layer("D")), "x = 1\nN << B:\n");
    EXPECT_EQ(show(tree.layer("E")), "x = 1\nN << B:\n");
}

} // namespace
} // namespace Layers
