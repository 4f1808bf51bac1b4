// The painted label and the gradient panel, by the pixels they paint; the moveable panel and the
// folder dialog (offered by the controls, not yet used by a window of the program).
#include "controls/boxlabl.h"
#include "controls/fldrdlg.h"
#include "controls/gradpan.h"
#include "support/guitesting.h"

#include <QFileDialog>

#include <algorithm>

namespace {

constexpr QRgb white = qRgb(255, 255, 255), black = qRgb(0, 0, 0), grey = qRgb(128, 128, 128);
constexpr QRgb face = qRgb(240, 240, 240), shadow = qRgb(160, 160, 160);
constexpr QRgb red = qRgb(255, 0, 0), blue = qRgb(0, 0, 255);

// Checks single pixels of a picture.
void pixels(const QImage& im, const std::vector<std::tuple<int, int, QRgb>>& expected) {
    for (const auto& [x, y, colour] : expected)
        EXPECT_EQ(im.pixel(x, y), colour) << x << "," << y;
}

int count(const QImage& im, QRgb colour) {
    const auto* bits = reinterpret_cast<const QRgb*>(im.constBits()); // RGB32, no padding
    return int(std::count(bits, bits + im.width() * im.height(), colour));
}

QFont captionFont() {
    QFont font = defaultPanelFont();
    font.setPointSize(14);
    return font;
}

// Outer raised: light top left, dark bottom right; inner lowered: the other way round. Disabled,
// the text is drawn twice. Numbers become the caption.
TEST(BoxLabel, BevelsBorderDisabledTextAndNumbers) {
    BoxLabel label;
    label.resize(60, 24);
    const QImage bevels = label.renderImage();
    pixels(bevels, {{0, 0, white}, {0, 23, white}, {59, 23, shadow}, {59, 0, shadow}});
    pixels(bevels, {{1, 1, shadow}, {58, 22, white}});
    label.setBevelInner(bvNone);
    label.setBevelOuter(bvNone);
    EXPECT_EQ(count(label.renderImage(), face), 60 * 24);
    label.setBorderStyle(bsSingle);
    pixels(label.renderImage(), {{0, 0, black}, {59, 23, black}, {1, 1, face}});

    label.setBorderStyle(bsNone);
    label.resize(80, 30);
    label.setFont(captionFont());
    label.setCaption("■■");
    QImage im = label.renderImage();
    EXPECT_EQ(count(im, white), 0);
    EXPECT_GT(count(im, black), 20);
    label.setEnabled(false);
    im = label.renderImage();
    EXPECT_EQ(count(im, black), 0);
    // The white pass lies one pixel down and right of the grey one.
    int whiteBelowGrey = 0;
    for (int y = 1; y < 30; ++y)
        for (int x = 1; x < 80; ++x)
            whiteBelowGrey += im.pixel(x, y) == white && im.pixel(x - 1, y - 1) == grey;
    EXPECT_GT(whiteBelowGrey, 0);

    label.setDecimals(2);
    // format, written as a float (or else as an integer), value, caption
    const std::vector<std::tuple<const char*, bool, double, const char*>> cases = {
        {"", true, 1.5, "1.50"},          {"%d", true, 1.5, "Format Error"},
        {"%d", false, 42, "42"},          {"%.1f %%", false, 42, "Format Error"},
        {"%.1f %%", true, 2.25, "2.2 %"}, {"%8.2n", true, 12345.678, "12,345.68"}};
    for (const auto& [format, isFloat, value, caption] : cases) {
        label.setFormatString(format);
        isFloat ? label.setAsFloat(value) : label.setAsInteger(int(value));
        EXPECT_EQ(label.caption(), caption) << format;
    }
    label.setCaption(" 7 ");
    EXPECT_EQ(label.asInteger(), 7);
    label.setCaption("abc");
    EXPECT_EQ(label.asFloat(), 0.0);
}

// The gradients run as the tables say; bevels lie over the background; the text effects use their
// colours.
TEST(GradPan, GradientsBevelsAndTextEffects) {
    GradientPanel pan;
    pan.resize(200, 100);
    pan.setBevelOuter(bvNone);
    pan.setColorStart(QColor(0, 0, 0));
    pan.setColorEnd(QColor(200, 100, 255));
    pan.setBackGroundEffect(bdDown);
    // The last band is one step short of colorStart, cut.
    pixels(
        pan.renderImage(),
        {{100, 0, qRgb(200, 100, 255)}, {100, 50, qRgb(100, 50, 127)}, {100, 99, qRgb(2, 1, 2)}});
    pan.setBackGroundEffect(bdVertIn);
    const QImage in = pan.renderImage();
    pixels(in, {{0, 50, qRgb(2, 1, 2)}, {99, 50, qRgb(198, 99, 252)}});
    pixels(in, {{100, 50, qRgb(196, 98, 249)}, {199, 50, black}});
    pan.setBackGroundEffect(bdFlat);
    pixels(pan.renderImage(), {{10, 10, black}});
    pan.setBevelOuter(bvRaised);
    pixels(pan.renderImage(), {{0, 0, white}, {199, 99, grey}});
    // A colour that is no RGB value cannot start or end a gradient.
    EXPECT_THROW(makeGradientTable(QColor(), Qt::white), ControlRangeError);
    EXPECT_THROW(makeGradientTable(Qt::white, QColor()), ControlRangeError);

    pan.resize(120, 40);
    pan.setColorStart(Qt::white);
    pan.setColorShadow(QColor(0, 0, 255));
    pan.setFont(captionFont());
    pan.setFontColor(QColor(255, 0, 0));
    pan.setCaption("■");
    // effect, rotation, colour, fewest pixels of it (0: none at all)
    const std::vector<std::tuple<TextEffect, TextRotation, QRgb, int>> cases = {
        {tenone, trNone, blue, 11},  {tenone, trNone, red, 0},     {teShadow, trNone, blue, 1},
        {teShadow, trNone, red, 11}, {teRaised, trNone, black, 1}, {tenone, TrUp, blue, 11}};
    for (const auto& [effect, rotation, colour, least] : cases) {
        pan.setTextEffect(effect);
        pan.setTextRotation(rotation);
        const int n = count(pan.renderImage(), colour);
        EXPECT_TRUE(least ? n >= least : n == 0) << effect << " " << rotation << ": " << n;
    }
}

TEST(GradPan, MoveableZonesMoveAndSize) {
    QWidget parent;
    parent.resize(400, 300);
    auto* pan = new GradientPanel(&parent);
    pan->setGeometry(50, 50, 200, 100);
    EXPECT_EQ(pan->hitTest(100, 3), HTNOWHERE);
    pan->setMoveable(true);
    const std::vector<std::tuple<int, int, HitTestZone>> zones = {
        {100, 3, HTTOP},     {100, 50, HTCAPTION}, {2, 2, HTTOPLEFT},        {2, 97, HTBOTTOMLEFT},
        {2, 50, HTLEFT},     {197, 2, HTTOPRIGHT}, {197, 97, HTBOTTOMRIGHT}, {197, 50, HTRIGHT},
        {100, 97, HTBOTTOM}, {100, 6, HTCAPTION}};
    for (const auto& [x, y, zone] : zones)
        EXPECT_EQ(pan->hitTest(x, y), zone) << x << "," << y;
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    int moves = 0;
    pan->onPanelMove = [&](ControlObject* sender) { moves += sender == pan; };
    const auto drag = [&](QPoint from, QPoint by) {
        QTest::mousePress(pan, Qt::LeftButton, Qt::NoModifier, from);
        QMouseEvent move(QEvent::MouseMove, from + by, pan->mapToGlobal(from) + by, Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(pan, &move);
        QTest::mouseRelease(pan, Qt::LeftButton, Qt::NoModifier,
                            pan->mapFromGlobal(pan->mapToGlobal(from) + by));
        return pan->geometry();
    };
    EXPECT_EQ(drag({100, 50}, {10, 20}), QRect(60, 70, 200, 100));
    EXPECT_GE(moves, 1);
    EXPECT_EQ(drag({198, 50}, {30, 0}), QRect(60, 70, 230, 100));
    EXPECT_EQ(drag({3, 3}, {-10, -10}), QRect(50, 60, 240, 110));
    // A failing move handler reaches the program's handler; the move stands.
    QString reported;
    pan->onFailure = [&](const QString& m) { reported = m; };
    pan->onPanelMove = [](ControlObject*) { throw ControlError("moved"); };
    EXPECT_EQ(drag({100, 50}, {5, 5}), QRect(55, 65, 240, 110));
    EXPECT_EQ(reported, "moved");
}

// Cancel keeps the folder, a choice sets it; the callback hears of each start with its param.
TEST(FolderDialog, CancelKeepsTheFolderAndAChoiceSetsIt) {
    QTemporaryDir root;
    ASSERT_TRUE(root.isValid() && QDir(root.path()).mkdir("data"));
    const QString chosen = QDir(root.path()).filePath("data");
    FolderDialog dialog;
    dialog.setTitle("フォルダの選択");
    dialog.setRootId(root.path());
    int initialized = 0;
    dialog.setParam(77);
    dialog.setBrowseCallBackProc([&](QWidget*, unsigned msg, const QString&, std::intptr_t data) {
        initialized += msg == BFFM_INITIALIZED && data == 77;
        return 0;
    });
    const auto answer = [&](bool accept) {
        whenModal([&, accept](QWidget* w) {
            auto* d = qobject_cast<QFileDialog*>(w);
            ASSERT_NE(d, nullptr);
            EXPECT_EQ(d->windowTitle(), "フォルダの選択");
            d->setDirectory(chosen);
            accept ? static_cast<QDialog*>(d)->accept() : d->reject();
        });
        const bool accepted = dialog.execute();
        return (accepted ? "chosen:" : "kept:") + dialog.folderName();
    };
    const QString folder = QDir::toNativeSeparators(chosen);
    EXPECT_EQ(answer(false), "kept:");
    EXPECT_EQ(answer(true), "chosen:" + folder);
    EXPECT_EQ(answer(false), "kept:" + folder);
    EXPECT_EQ(initialized, 3);
}

} // namespace
