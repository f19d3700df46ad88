// The runtime's formatting rules that a label or message shows. Agreement
// with the runtime itself, over many values, is checked under Wine.
#include "util/c_printf.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zel {
namespace {

Text P(TextView format, FormatArg arg) { return CPrintf(format, arg); }

TEST(CPrintfTest, IntegersAndTexts) {
  EXPECT_EQ(P(u"[%5d|%-5d|%05d]", -42), u"[  -42|-42  |-0042]");
  EXPECT_EQ(P(u"%+d % d %x %#X %#o %u", -1), u"-1 -1 ffffffff 0XFFFFFFFF 037777777777 4294967295");
  EXPECT_EQ(P(u"[%.0d] %hd %#08x", 0), u"[] 0 00000000");
  EXPECT_EQ(P(u"\"%s\" is a wrong Axis type", u"real"), u"\"real\" is a wrong Axis type");
  EXPECT_EQ(P(u"[%.2s|%-6s]", u"abc"), u"[ab|abc   ]");
  EXPECT_EQ(P(u"%s %d", 5), u"(null) 5");
  EXPECT_EQ(P(u"%d", u"text"), u"0");
}

TEST(CPrintfTest, PercentSignsAndUnknownConversions) {
  EXPECT_EQ(P(u"100%% %y%d", 3), u"100% y3");
  EXPECT_EQ(P(u"trailing %", 3), u"trailing ");
  EXPECT_EQ(P(u"%", 3.0), u"");
}

TEST(CPrintfTest, FloatingPointRoundsTheExactValueHalfUp) {
  EXPECT_EQ(P(u"%f", 1.5), u"1.500000");
  EXPECT_EQ(P(u"%.2f %.0f %.0f %.1f", 0.125), u"0.13 0 0 0.1");
  EXPECT_EQ(P(u"%.0f", 2.5), u"3");
  EXPECT_EQ(P(u"%.2f", 0.006), u"0.01");
  EXPECT_EQ(P(u"%.2f", 9.996), u"10.00");
  EXPECT_EQ(P(u"%2.3f", double(0.1f)), u"0.100");
  EXPECT_EQ(P(u"%.0f", 1e30), u"1000000000000000019884624838656");
  EXPECT_EQ(P(u"%.40f", std::ldexp(1.0, -40)), u"0.0000000000009094947017729282379150390625");
  EXPECT_EQ(P(u"%.60e", 0.1), u"1.000000000000000055511151231257827021181583404541015625000000e-001");
  EXPECT_EQ(P(u"[%10.2f|%08.2f|%-6.1f]", -3.14159), u"[     -3.14|-0003.14|-3.1  ]");
  EXPECT_EQ(P(u"%.3e", 1234.5), u"1.235e+003");
  EXPECT_EQ(P(u"%1.3e %e", 0.001), u"1.000e-003 1.000000e-003");
  EXPECT_EQ(P(u"%g %g %#g", 0.00001), u"1e-005 1e-005 1.00000e-005");
  EXPECT_EQ(P(u"%g", 123456789.0), u"1.23457e+008");
}

TEST(CPrintfTest, InfinityAndNanUseTheRuntimesSpelling) {
  const double inf = INFINITY, nan = std::nan("");
  EXPECT_EQ(P(u"%f %.2f %.3f %.0f %e %g", inf), u"1.#INF00 1.#J 1.#IO 1 1.#INF00e+000 1.#INF");
  EXPECT_EQ(P(u"%f", -inf), u"-1.#INF00");
  EXPECT_EQ(P(u"%f %2.3f", nan), u"1.#QNAN0 1.#QO");
  EXPECT_EQ(P(u"%f", -nan), u"-1.#IND00");
  EXPECT_EQ(P(u"[%10.2f]", inf), u"[      1.#J]");
}

}  // namespace
}  // namespace zel
