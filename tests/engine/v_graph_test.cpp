#include "engine/v_graph.h"

#include <tuple>
#include <utility>

#include "engine/graph_error.h"
#include "engine/v_pie_dataset.h"
#include "engine_test_support.h"
#include "util/text_ids.h"

namespace zel {
namespace {

class VGraphTest : public EngineTest {
 protected:
  FakeWindow window;
  VGraph graph{&window};

  // The formatted message an action raises, or "" when it raises none.
  template <typename Action>
  Text MessageOf(Action action) {
    try {
      action();
    } catch (const GraphError& e) {
      return e.Message();
    }
    return Text();
  }

  std::vector<int32_t> Ids(const std::vector<EnumEntry>& entries) {
    std::vector<int32_t> ids;
    for (const EnumEntry& e : entries) ids.push_back(e.id);
    return ids;
  }

  void AddPlot(int32_t id, int32_t x = 1, int32_t y = 1) { graph.AddDataset(id, kPlot, x, y, nullptr); }
};

TEST_F(VGraphTest, AxesAndDatasetsLiveInThreeNameSpacesInInsertionOrder) {
  EXPECT_EQ(graph.Kind(), kGraphEmpty);
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(1, kAxisReal, nullptr);
  graph.AddXAxis(-5, kAxisTime, nullptr);
  graph.AddXAxis(3, kAxisInteger, nullptr);
  AddPlot(1);
  EXPECT_EQ(graph.Kind(), kGraphOfAxes);
  EXPECT_EQ(Ids(graph.EnumXAxes()), (std::vector<int32_t>{1, -5, 3}));
  EXPECT_EQ(graph.EnumXAxes()[1].type, CodeOf(kAxisTime));
  EXPECT_EQ(MessageOf([&] { graph.AddXAxis(1, kAxisReal, nullptr); }),
            u"An axis with  id = 1 already exists");
  EXPECT_EQ(MessageOf([&] { AddPlot(1); }), u"A dataset with  id = 1 already exists");
  graph.RemoveXAxis(-5);
  EXPECT_EQ(Ids(graph.EnumXAxes()), (std::vector<int32_t>{1, 3}));
  EXPECT_EQ(graph.FindXAxis(3), &graph.XAxis(3));
  EXPECT_EQ(graph.FindXAxis(-5), nullptr);
}

TEST_F(VGraphTest, MissingThingsAreNamedByTheirIds) {
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(2, kAxisReal, nullptr);
  EXPECT_EQ(MessageOf([&] { AddPlot(9, 7, 8); }), u"Axis with  id = 7 does NOT exist");
  EXPECT_EQ(MessageOf([&] { AddPlot(9, 1, 8); }), u"Axis with  id = 8 does NOT exist");
  EXPECT_EQ(MessageOf([&] { graph.RemoveDataset(4); }), u"Dataset with id = 4 does NOT exist!");
  EXPECT_EQ(MessageOf([&] { graph.ClearDataset(4); }), u"Dataset with id = 4 does NOT exist!");
  EXPECT_EQ(MessageOf([&] { graph.RemoveYAxis(1); }), u"Axis with  id = 1 does NOT exist");
  EXPECT_EQ(MessageOf([&] { graph.AddXAxis(5, kAxisReal, nullptr, VAxis::kOnAxis, 1); }),
            u"Axis with  id = 1 does NOT exist");
  EXPECT_EQ(MessageOf([&] { graph.AddLimitValue(1, 2.0, std::nullopt, std::nullopt, 1); }),
            u"Axis with  id = 1 does NOT exist");
  EXPECT_EQ(graph.datasets().size(), 0u);
  EXPECT_EQ(graph.xAxes().size(), 1u);
  EXPECT_EQ(graph.XAxis(1).refCount(), 0);
  EXPECT_EQ(MessageOf([&] { graph.SetYAxisProperties(1, {.max = Text(u"top")}); }),
            u"Axis with  id = 1 does NOT exist");
}

TEST_F(VGraphTest, PiesExcludeEverythingElse) {
  graph.AddHairline(50, std::nullopt, 1);
  graph.AddDataset(1, kPie, 0, 0, nullptr);
  EXPECT_EQ(graph.Kind(), kGraphOfPie);
  EXPECT_TRUE(graph.hairlines().empty());
  EXPECT_EQ(graph.AddHairline(50, std::nullopt, 1), std::nullopt);
  EXPECT_EQ(MessageOf([&] { graph.AddXAxis(1, kAxisReal, nullptr); }),
            u"A PIE type dataset already present");
  EXPECT_EQ(MessageOf([&] { AddPlot(2); }), u"A PIE type dataset already present");
  graph.AddDataset(2, kPie, 0, 0, nullptr);
  EXPECT_FALSE(graph.SetPieColorAt(2, 0, 5));

  VGraph axes(&window);
  axes.AddYAxis(1, kAxisReal, nullptr);
  EXPECT_EQ(MessageOf([&] { axes.AddDataset(1, kPie, 0, 0, nullptr); }),
            u"A non-PIE dataset or axes already present");
  axes.AddXAxis(1, kAxisReal, nullptr);
  axes.AddDataset(3, kPlot, 1, 1, nullptr);
  EXPECT_EQ(MessageOf([&] { axes.SetPieColorAt(3, 0, 0); }), u"The dataset (id=3) is not PIE.");
}

TEST_F(VGraphTest, TwoDiscreteAxesCannotCarryADataset) {
  graph.AddXAxis(1, kAxisDiscrete, nullptr);
  graph.AddYAxis(1, kAxisDiscrete, nullptr);
  EXPECT_EQ(MessageOf([&] { AddPlot(1); }), u"Both X and Y axes for the dataset can not be discrete.");
  EXPECT_TRUE(graph.datasets().empty());
  EXPECT_EQ(graph.XAxis(1).refCount(), 0);
}

TEST_F(VGraphTest, ReferencedAxesStayUntilTheirUsersGo) {
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(2, kAxisReal, nullptr, VAxis::kOnAxis, 1, 0.5f);
  AddPlot(10);
  EXPECT_EQ(MessageOf([&] { graph.RemoveXAxis(1); }),
            u"The Axis 1 is referenced by other axes or datasets.");
  graph.RemoveDataset(10);
  EXPECT_EQ(MessageOf([&] { graph.RemoveXAxis(1); }),
            u"The Axis 1 is referenced by other axes or datasets.");
  graph.RemoveYAxis(2);
  graph.RemoveYAxis(1);
  graph.RemoveXAxis(1);
  EXPECT_EQ(graph.Kind(), kGraphEmpty);
}

TEST_F(VGraphTest, BadPropertiesLeaveTheGraphAsItWas) {
  AxisProps bad{.max = Text(u"top")};
  EXPECT_EQ(MessageOf([&] { graph.AddXAxis(1, kAxisReal, &bad); }), u"Wrong MAX value type");
  EXPECT_TRUE(graph.xAxes().empty());
  graph.AddXAxis(1, kAxisReal, nullptr);
  EXPECT_EQ(MessageOf([&] { graph.SetXAxisProperties(1, bad); }), u"Wrong MAX value type");
}

TEST_F(VGraphTest, EraseAllRemovesDatasetsAndAxesButKeepsHairlines) {
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(1, kAxisReal, nullptr);
  graph.AddXAxis(2, kAxisReal, nullptr, VAxis::kOnAxis, 1, 0);
  graph.AddYAxis(3, kAxisReal, nullptr, VAxis::kOnAxis, 2, 0);
  AddPlot(1);
  graph.AddHairline(25, 0x00FF00, 2);
  graph.EraseAll();
  EXPECT_EQ(graph.Kind(), kGraphEmpty);
  EXPECT_EQ(std::tuple(graph.xAxes().size(), graph.yAxes().size(), graph.hairlines().size()), std::tuple(0u, 0u, 1u));

  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(1, kAxisReal, nullptr);
  AddPlot(1);
  AddPlot(2);
  int layouts = graph.layoutWidth(), invalidations = window.invalidations;
  window.client = {0, 0, 10, 10};
  graph.RemoveAllDatasets();
  EXPECT_EQ(std::tuple(graph.datasets().size(), graph.xAxes().size()), std::tuple(0u, 1u));
  EXPECT_EQ(std::tuple(window.invalidations, graph.layoutWidth()), std::tuple(invalidations + 1, layouts));
}

TEST_F(VGraphTest, ChangesLayOutForTheClientSizePlusOneAndRepaint) {
  window.client = {0, 0, 400, 300};
  graph.AddXAxis(1, kAxisReal, nullptr);
  EXPECT_EQ(std::tuple(graph.layoutWidth(), graph.layoutHeight(), window.invalidations), std::tuple(401, 301, 1));

  graph.SetSuspendDraw(1);
  graph.AddYAxis(1, kAxisReal, nullptr);
  AddPlot(1);
  graph.AddHairline(10, std::nullopt, 1);
  EXPECT_EQ(window.invalidations, 1);
  graph.SetSuspendDraw(0);
  EXPECT_EQ(window.invalidations, 1);

  window.exists = false;
  window.client = {0, 0, 50, 50};
  graph.RemoveDataset(1);
  EXPECT_EQ(std::pair(graph.layoutWidth(), window.invalidations), std::pair(401, 1));

  VGraph windowless;
  windowless.AddXAxis(1, kAxisReal, nullptr);
  EXPECT_EQ(windowless.layoutWidth(), 0);
}

TEST_F(VGraphTest, ScrollBarsShowThePlotFrameWithinTheDataArea) {
  graph.UpdateLayoutAndRepaint();
  graph.SetScrollbars(1, -1);
  EXPECT_EQ(std::pair(graph.horizontalScrollbar(), graph.verticalScrollbar()), std::pair(true, false));
  // Unzoomed, frame and data area are one: the position is lowered below 0
  // so that position + page stays within the range.
  EXPECT_EQ(window.horizontal.back(), (ScrollBarState{400, 401, -1}));
  EXPECT_EQ(window.vertical.back(), ScrollBarState{});

  // The middle half both ways: the frame (401 by 281 pixels) lies a quarter
  // into a data area twice its size.
  graph.SetZoomRect({.left = 0.25f, .right = 0.75f, .bottom = 0.25f, .top = 0.75f});
  graph.SetScrollbars(-1, 5);
  graph.UpdateLayoutAndRepaint();
  EXPECT_EQ(window.horizontal.back(), (ScrollBarState{801, 401, 201}));
  EXPECT_EQ(window.vertical.back(), (ScrollBarState{561, 281, 140}));
  size_t updates = window.vertical.size();
  graph.SetSuspendDraw(0);
  EXPECT_EQ(window.vertical.size(), updates + 1);
  graph.SetScrollbars(0, 0);
  EXPECT_EQ(window.horizontal.back(), ScrollBarState{});
}

TEST_F(VGraphTest, HairlineIdsComeFromOneCounterOfTheProcess) {
  VGraph other(nullptr);
  EXPECT_EQ(graph.AddHairline(50, std::nullopt, 3), 0);
  EXPECT_EQ(other.AddHairline(20, 0x00FF00, 1), 1);
  EXPECT_EQ(graph.AddHairline(75, 0x0000FF, -2), 2);
  const Hairline& h = graph.hairlines()[0];
  EXPECT_FLOAT_EQ(h.position, 0.5f);
  EXPECT_EQ(h.color, Color(0xFF0000));
  EXPECT_EQ(graph.hairlines()[1].width, -2);  // kept as given
  graph.AddYAxis(1, kAxisReal, nullptr);
  EXPECT_EQ(graph.AddLimitValue(1, 2.0, std::nullopt, std::nullopt, 1), 0);
  EXPECT_EQ(graph.AddLimitValue(1, 3.0, std::nullopt, std::nullopt, 1), 1);
  graph.RemoveLimitValue(0);
  graph.RemoveLimitValue(99);
  EXPECT_EQ(graph.YAxis(1).limitValues().size(), 1u);
}

TEST_F(VGraphTest, GridPropsWithANegativeColourClearOnlyTheFirstWord) {
  graph.SetGridProps(0x112233, {4, 5, 3});
  graph.SetGridProps(-1, {7, 8, 9});
  EXPECT_EQ(graph.gridColor(), 0);
  EXPECT_EQ(graph.gridWords(), (std::array<int16_t, 3>{0, 5, 3}));
}

TEST_F(VGraphTest, ValuesReachTheDatasetAndLayoutComputesAxisSteps) {
  AxisProps range{.min = 0.0, .max = 100.0};
  graph.AddXAxis(1, kAxisReal, &range);
  graph.AddYAxis(1, kAxisReal, &range);
  AddPlot(1);
  std::vector<float> xs = {1, 2, 3};
  std::vector<int32_t> status = {0, 0, 0};
  graph.SetDatasetValues(1, 3, Column(xs), Column(xs), status, false);
  EXPECT_EQ(graph.Dataset(1).count(), 3u);
  EXPECT_EQ(graph.XAxis(1).annotationStep(), 10.0f);
  graph.SetZoomRect({.left = 0, .right = 0.5f, .bottom = 0, .top = 0.5f});
  graph.ClearDataset(1);
  EXPECT_EQ(graph.XAxis(1).annotationStep(), 5.0f);
  EXPECT_EQ(graph.Dataset(1).count(), 0u);
}

}  // namespace
}  // namespace zel
