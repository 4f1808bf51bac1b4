// The lines of exportRows beyond the golden texts of the window (output_form_test): the print
// hand-off's texts and signs, and options in mode 2.
#include "output/exportrows.h"

#include "store/codepage.h"
#include "support/testing.h"

namespace {

Currency c(const char* t) {
    return strToCurr(QString::fromUtf8(t));
}
TEST(ExportRows, PrintLinesTakeTheSubmittedSideTheSignsAndNoDelimiterInsideATextOrOptions) {
    // Distinct values in every exported field; the cost side must not appear.
    PipeRow s;
    s.setSize(u("15A"));
    s.setUnit(u("ｍ"));
    s.adoptedUnitPrice = c("4090");
    s.submittedPrice = c("1234.5");
    for (int e = 1; e <= 7; ++e) {
        s.factor(e) = strToCurr(QStringLiteral("0.%1").arg(e));
        s.submittedAmounts[std::size_t(e - 1)] = Currency::fromInt(1000 * e + 1);
        s.costAmounts[std::size_t(e - 1)] = c("77777");
    }
    s.submittedAmounts[0] = c("1234567.5");
    s.submittedUnitPrice = c("4092.25");
    s.costUnitPrice = c("66666");
    const ExportSheet sheet{{u("屋内一般"), u("機械室・便所"), u("屋外架空"), u("地中埋設")},
                            {u("配管用炭素鋼鋼管"), u("給水"), u("ねじ接合")}};
    const QByteArray line =
        toAnsi(u("配管用炭素鋼鋼管;給水;ねじ接合;機械室・便所;15A;ｍ;4,090;1,235;0.1;0.2;"
                 "0.3;0.4;0.5;0.6;0.7;1,234,568;2,001;3,001;4,001;5,001;6,001;7,001;"
                 "4,092;"));
    EXPECT_EQ(exportRowLine(ExportPrint, s, 1, sheet, {}), line);
    EXPECT_EQ(exportRowLine(ExportPrint, s, 1, sheet, {true, true}), line);

    // The print program splits a line at ";": a ";" inside a text becomes "；", a line break a
    // blank. The other modes write texts as they stand. Minus signs stay; one tab leaves
    // element 6 empty.
    PipeRow t;
    t.setSize(u("1;5"));
    t.setUnit(u("m,;"));
    t.submittedUnitPrice = c("-1234");
    t.adoptedUnitPrice = c("-1230");
    t.submittedAmounts[2] = c("-5");
    t.factor(1) = c("-0.5");
    const ExportSheet semis{{u("屋内;一般")}, {u("鋼管;VA"), u(";"), u("ねじ;接合\r\n")}};
    EXPECT_EQ(
        exportRowLine(ExportPrint, t, 0, semis, {}),
        toAnsi(u(
            "鋼管；VA;；;ねじ；接合  ;屋内；一般;1；5;m,；;-1,230;0;-0.5;0;0;0;0;0;0;0;0;-5;0;0;;0;"
            "-1,234;")));
    EXPECT_EQ(exportRowLine(ExportCsv, t, 0, semis, {false, true}),
              toAnsi(u("1;5,m,;,-1230,0,0,0,-5,0,0,,0,-1234,")));
}

} // namespace
