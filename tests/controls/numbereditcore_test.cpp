// The number box logic without a window: number texts, rounding on the digits, Value writes,
// limits and arrow steps, signs, the digit limit, the paste filter and hexadecimal mode.
#include "controls/numbereditcore.h"
#include "support/testing.h"

namespace {

// Each helper acts on the box and gives what it shows then.
struct Box : NumberEditCore {
    QString typed(const char* keys) { return typeText(keys), numberText(); }
    QString pasted(const char* clip) { return pasteText(clip), numberText(); }
    QString set(long double v) { return setValue(v), numberText(); }
    QString exited() { return doExit(), numberText(); }
    double v() const { return double(value()); }
    double step(ArrowKeyDirection d) { return stepByArrow(d), v(); }
};

// A write shows the value rounded on its digits and keeps the number shown; a plus typed stays,
// an empty text leaves as 0 and a hidden zero as nothing.
TEST(NumberValue, WritesShowTheRoundedTextAndKeepTheShownNumber) {
    // value, figure, F: fixed and C: comma, round mode (Down, Round, Up), text shown
    const QString cases = "1234.5 2 FC D 1,234.50|1.29 1 - D 1.2|1.2 0 - U 2|-1.2 0 - U -2|"
                          "1.2001 2 - U 1.21|0.125 2 - R 0.13|0.124 2 - R 0.12|0.999 2 - R 1.00|"
                          "-12.96 1 - R -13.0|1.5 2 - D 1.5|1.101 2 - D 1.10|-0.5 -1 C D -0.5|"
                          "1234567.891 -1 C D 1,234,567.891|3 2 F D 3.00|2.5 0 F D 2";
    for (const QString& c : cases.split('|')) {
        const QStringList f = c.split(' ');
        Box b;
        b.setFigure(f[1].toInt());
        b.setFixed(f[2].contains('F'));
        b.setComma(f[2].contains('C'));
        b.setRoundMode(RoundMode(QString("DRU").indexOf(f[3])));
        EXPECT_EQ(b.set(f[0].toDouble()), f[4]) << c.toStdString();
        EXPECT_EQ(floatToGeneral(b.value()), floatToGeneral(QString(f[4]).remove(',').toDouble()));
    }
    // On the digits alone: zeros cut are no carry, a carry can add a whole digit, Down cuts a
    // negative towards zero.
    Box up, round, down, plus, empty, hidden;
    up.setRoundMode(rmUp);
    round.setRoundMode(rmRound);
    EXPECT_EQ(QStringList({up.roundNumberText("1.2000", 2), round.roundNumberText("99.99", 1),
                           down.roundNumberText("-1.29", 1)})
                  .join(' '),
              "1.20 100.0 -1.2");
    plus.setNumberText("+5");
    empty.setNumberText(QString());
    hidden.setZeroVisible(false);
    EXPECT_EQ(QStringList({QString::number(plus.v()), plus.exited(), empty.exited(),
                           hidden.numberText(), hidden.exited()})
                  .join('|'),
              "5|+5|0||");
}

TEST(NumberValue, LimitsArrowStepsAndIntegerViews) {
    Box b, m, r;
    b.setMax(10);
    b.setMin(1);
    b.setLimit(true);
    b.setValue(10);
    EXPECT_EQ(b.step(adUp), 10.0);
    b.setWrap(true);
    EXPECT_EQ(b.step(adUp), 1.0);
    EXPECT_EQ(b.step(adDown), 10.0);
    b.setIncrement(0.5L);
    EXPECT_EQ(b.step(adDown), 9.5);
    // A handler may change the new value.
    b.onArrowKeyChange = [](ControlObject*, ArrowKeyDirection d, Extended& v) {
        if (d == adUp) v = 3;
    };
    EXPECT_EQ(b.step(adUp), 3.0);
    EXPECT_EQ(b.set(50), "10");
    // Typing beyond a bound: Value is held, the text shows what was typed.
    b.setNumberText("25");
    EXPECT_EQ(std::pair(b.v(), b.numberText()), std::pair(10.0, QString("25")));
    m.setMin(8);
    m.setMax(5);
    EXPECT_EQ(double(m.min()), 5.0);
    m.setMin(7);
    EXPECT_EQ(double(m.max()), 7.0);
    // Amounts typed into a number box are taken to whole yen by rounding, not by cutting.
    r.setRoundMode(rmRound);
    r.setValue(2.5L);
    EXPECT_EQ(r.asInt64(), 3);
    r.setValue(-3e10L);
    EXPECT_EQ(std::pair(r.asInt64(), r.intValue()),
              std::pair(std::int64_t(-30000000000LL), -2147483647 - 1));
    r.setCurrency(strToCurr("1234.5678"));
    EXPECT_EQ(r.numberText() + ' ' + currToStr(r.asCurrency()), "1234.5678 1234.5678");
    EXPECT_THROW(r.setNumberText("-."), ConvertError);
}

TEST(NumberTyping, SignsDigitLimitSeparatorAndPaste) {
    Box s, d, c, p; // signs, digits, comma, paste
    s.setNumberText("12");
    d.setMaxIntLength(3);
    d.setNumberText("123");
    c.setComma(true);
    c.setNumberText(QString());
    // Steps: the box, the caret put at (-1: where it is) with a selection of this length, the keys
    // typed, the text then and the caret then (-1: not checked). A selection of only the
    // separator is not replaced.
    const std::vector<std::tuple<Box*, int, int, const char*, const char*, int>> steps = {
        {&s, 0, 0, "-", "-12", -1},    {&s, -1, 0, "-", "12", -1},
        {&s, 2, 0, "-", "-12", -1},    {&s, -1, 0, "-", "12", -1},
        {&s, -1, 0, "+", "+12", -1},   {&s, -1, 0, "-", "-12", -1},
        {&d, -1, 0, "4", "123", -1},   {&d, -1, 0, ".5", "123.5", -1},
        {&d, -1, 0, ".", "123.5", -1}, {&d, 1, 1, "9", "193.5", -1},
        {&d, 3, 1, "9", "193.5", -1},  {&c, -1, 0, "1234", "1,234", 5},
        {&c, -1, 0, "5", "12,345", 6}};
    for (const auto& [box, caret, length, keys, shown, caretAfter] : steps) {
        if (caret >= 0) box->setSelStart(caret);
        box->setSelLength(length);
        EXPECT_EQ(box->typed(keys), shown) << keys;
        EXPECT_TRUE(caretAfter < 0 || box->selStart() == caretAfter) << keys;
    }
    EXPECT_EQ(std::pair(s.v(), c.v()), std::pair(-12.0, 12345.0));
    p.setNumberText(QString());
    EXPECT_EQ(p.pasted("-1a2.3.4"), "-12.34");
    p.setSelStart(0);
    EXPECT_EQ(p.pasted("5"), "-12.34"); // in front of the sign: nothing
    p.setSelStart(6);
    EXPECT_EQ(p.pasted("+7-"), "-12.347");
}

// Decimal number texts and conversions; in hexadecimal mode the box formats, parses and filters.
TEST(NumberText, FormsConversionsAndHexadecimalMode) {
    const QStringList texts = {plainNumberText(1.5e-7L),  plainNumberText(1.5e20L),
                               plainNumberText(-2.5e-6L), floatToGeneral(1.5e-7L),
                               floatToGeneral(1234.5L),   floatToGeneral(0.1L + 0.2L),
                               formatThousands(-1234567), formatThousands(999)};
    EXPECT_EQ(texts.join(' '), "0.00000015 150000000000000000000 -0.0000025 1.5E-7 1234.5 0.3 "
                               "-1,234,567 999");
    EXPECT_THROW(textToInt64("99999999999999999999"), ConvertError);
    EXPECT_THROW(textToInt32("3000000000"), ConvertError);
    Box b;
    b.setValue(255);
    b.setNumberType(ntHex);
    EXPECT_EQ(b.numberText(), "FF");
    b.setFigure(4);
    EXPECT_EQ(b.numberText(), "00FF");
    b.setNumberText("1a");
    EXPECT_EQ(b.v(), 26.0);
    for (const char key : {'-', '+', 'g'}) // "+" only after a "-"
        EXPECT_FALSE(b.isValidChar(QLatin1Char(key))) << key;
    b.setValidMinus(true);
    EXPECT_EQ(QStringList({b.set(-26), b.asText()}).join(' '), "-001A -1A");
    EXPECT_EQ(b.typed("+"), "001A");
    b.setValidMinus(false);
    // Without a minus a negative value shows its 32-bit pattern; a figure over eight digits pads
    // with zeros that still convert.
    for (const auto& [figure, value, shown] : std::vector<std::tuple<int, int, const char*>>{
             {4, -1, "FFFFFFFF"}, {10, 255, "00000000FF"}, {10, -1, "00FFFFFFFF"}}) {
        b.setFigure(figure);
        EXPECT_EQ(b.set(value), shown);
        EXPECT_EQ(b.v(), value) << shown;
    }
    EXPECT_THROW(b.setNumberText("100000000"), ConvertError);
}

} // namespace
