// Prints the worked example of the composite price calculation, computed by
// the engine, in all its option variants.

#include "document/pipetypedocument.h"
#include "platform/commandline.h"

#include <cstdio>

namespace {

Currency c(const char* text) {
    return strToCurr(QString::fromLatin1(text));
}

void setExample(PipeTypeDocument& doc) {
    doc.clearRows(RowCount);
    PipeRow& r = doc.rows()[1];
    r.listPrice = c("1234");
    r.submittedPrice = c("860");
    r.costPrice = c("750");
    const char* factors[7] = {"1.1", "0.35", "0.05", "0.08", "0.123", "0.015", "0.1"};
    for (int i = 0; i < 7; ++i)
        r.factors[std::size_t(i)] = c(factors[i]);
    PipeTypeOptions o = doc.options();
    o.labourSubmitted() = c("18000");
    o.labourCost() = c("15000");
    o.elementDigits() = c("1");
    o.elementFraction() = c("0.9");
    o.adoptedDigits() = c("10");
    o.adoptedFraction() = c("0");
    o.unitDigits() = c("10");
    o.unitFraction() = c("0.9");
    o.rateSubmitted() = c("70");
    o.rateCost() = c("60");
}

void printSide(const char* side, const std::array<Currency, 7>& e, Currency total) {
    std::printf("  %-9s", side);
    for (Currency x : e)
        std::printf(" %8s", qPrintable(formatGeneral(x)));
    std::printf(" %8s", qPrintable(formatAmount(total)));
}

void printCase(PipeTypeDocument& doc, const char* title) {
    doc.calculateRow(1);
    const PipeRow& r = doc.rows()[1];
    std::printf("%s\n", title);
    printSide("submitted", r.submittedAmounts, r.submittedUnitPrice);
    std::printf("  adopted %s\n", qPrintable(formatAmount(r.adoptedUnitPrice)));
    printSide("cost", r.costAmounts, r.costUnitPrice);
    std::printf("\n");
}

} // namespace

int main(int argc, char** argv) {
    const int standard = standardOptions(
        argc, argv, QStringLiteral("qorvale-demo"),
        QStringLiteral("usage: qorvale-demo\n"
                       "       qorvale-demo --help | --version\n"
                       "  Prints the worked example of the composite price calculation.\n"));
    if (standard >= 0) return standard;
    if (argc > 1) {
        std::fprintf(stderr, "qorvale-demo: takes no arguments\n");
        return 2;
    }
    PipeTypeDocument doc;
    std::printf("Composite unit price, worked example (TEIKA 1234, GROSS 860, NET 750)\n");
    std::printf("  %-9s %8s %8s %8s %8s %8s %8s %8s %8s\n", "side", "c1", "c2", "c3", "c4", "c5",
                "c6", "c7", "total");
    setExample(doc);
    printCase(doc, "Piping mode, other cost on labour:");
    setExample(doc);
    doc.options().otherMethod() = 1;
    printCase(doc, "Piping mode, other cost on all elements:");
    setExample(doc);
    doc.options().modeFlag() = 1;
    printCase(doc, "Refrigerant mode:");
    setExample(doc);
    doc.options().rateOn() = c("1");
    printCase(doc, "Unit prices from the list price (70 / 60 per cent):");
    setExample(doc);
    doc.options().elementDigits() = c("100");
    doc.options().elementFraction() = c("0.5");
    doc.options().adoptedDigits() = c("3");
    doc.options().adoptedFraction() = c("0.5");
    printCase(doc, "Two decimals per element, half up; adopted to three significant digits:");
    return 0;
}
