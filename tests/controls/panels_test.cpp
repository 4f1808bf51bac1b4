// The painted label, the gradient panel and the folder dialog, and the
// sample picture of all controls.
#include "controls/boxlabl.h"
#include "controls/controlssample.h"
#include "controls/fldrdlg.h"
#include "controls/gradpan.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// The colours the panels paint with, as they stand in the pictures.
constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb black = qRgb(0, 0, 0);
constexpr QRgb grey = qRgb(128, 128, 128);
constexpr QRgb buttonFace = qRgb(240, 240, 240);
constexpr QRgb buttonShadow = qRgb(160, 160, 160);

QRgb px(const QImage& im, int x, int y) {
    return im.pixel(x, y);
}

int countColour(const QImage& im, const QRect& r, QRgb c) {
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (px(im, x, y) == c) ++n;
    return n;
}

QFont captionFont(int pointSize) {
    QFont font = defaultPanelFont();
    font.setPointSize(pointSize);
    return font;
}

TEST(BoxLabel, NumbersBecomeTheCaption) {
    BoxLabel label;
    EXPECT_EQ(label.width(), 70);
    EXPECT_EQ(label.height(), 20);
    label.setDecimals(2);
    label.setAsFloat(1.5);
    EXPECT_EQ(label.caption(), QStringLiteral("1.50"));
    label.setFormatString(QStringLiteral("%d"));
    label.setAsFloat(1.5);
    EXPECT_EQ(label.caption(), QStringLiteral("Format Error"));
    EXPECT_EQ(label.storedValue(), 1.5);
    label.setAsInteger(42);
    EXPECT_EQ(label.caption(), QStringLiteral("42"));
    label.setFormatString(QStringLiteral("%.1f %%"));
    label.setAsInteger(42);
    EXPECT_EQ(label.caption(), QStringLiteral("Format Error"));
    label.setAsFloat(2.25);
    EXPECT_EQ(label.caption(), QStringLiteral("2.2 %"));
    label.setFormatString(QStringLiteral("%8.2n"));
    label.setAsFloat(12345.678);
    EXPECT_EQ(label.caption(), QStringLiteral("12,345.68"));
    label.setCaption(QStringLiteral("abc"));
    EXPECT_EQ(label.asFloat(), 0.0);
    label.setCaption(QStringLiteral(" 7 "));
    EXPECT_EQ(label.asInteger(), 7);
}

TEST(BoxLabel, BevelsAndBorder) {
    BoxLabel label;
    label.resize(60, 24);
    QImage im = label.renderImage();
    const QRgb shadow = buttonShadow;
    EXPECT_EQ(px(im, 0, 0), white); // outer raised: light top left
    EXPECT_EQ(px(im, 0, 23), white);
    EXPECT_EQ(px(im, 59, 23), shadow); // dark bottom right
    EXPECT_EQ(px(im, 59, 0), shadow);
    EXPECT_EQ(px(im, 1, 1), shadow); // inner lowered: dark top left
    EXPECT_EQ(px(im, 58, 22), white);

    label.setBevelInner(bvNone);
    label.setBevelOuter(bvNone);
    im = label.renderImage();
    const QRgb face = buttonFace;
    EXPECT_EQ(countColour(im, QRect(0, 0, 60, 24), face), 60 * 24);

    label.setBorderStyle(bsSingle);
    im = label.renderImage();
    EXPECT_EQ(px(im, 0, 0), black);
    EXPECT_EQ(px(im, 59, 23), black);
    EXPECT_EQ(px(im, 1, 1), face);
}

TEST(BoxLabel, DisabledTextIsDrawnTwice) {
    BoxLabel label;
    label.resize(80, 30);
    label.setBevelInner(bvNone);
    label.setBevelOuter(bvNone);
    label.setFont(captionFont(14));
    label.setFontColor(Qt::black);
    label.setCaption(QStringLiteral("■■"));
    const QRect all(0, 0, 80, 30);
    QImage im = label.renderImage();
    EXPECT_EQ(countColour(im, all, white), 0);
    EXPECT_GT(countColour(im, all, black), 20);
    label.setEnabled(false);
    im = label.renderImage();
    EXPECT_EQ(countColour(im, all, black), 0);
    EXPECT_GT(countColour(im, all, grey), 20);
    EXPECT_GT(countColour(im, all, white), 0); // the white pass shows one pixel down right
    // The white pass lies one pixel down and right of the grey one.
    int whiteBelowGrey = 0;
    for (int y = 1; y < 30; ++y)
        for (int x = 1; x < 80; ++x)
            if (px(im, x, y) == white && px(im, x - 1, y - 1) == grey) ++whiteBelowGrey;
    EXPECT_GT(whiteBelowGrey, 0);
}

TEST(GradPan, GradientsRunAsTheTablesSay) {
    GradientPanel pan;
    pan.resize(200, 100);
    pan.setBevelOuter(bvNone);
    pan.setColorStart(QColor(0, 0, 0));
    pan.setColorEnd(QColor(200, 100, 255));
    pan.setBackGroundEffect(bdDown);
    QImage im = pan.renderImage();
    const GradientTable down = makeGradientTable(pan.colorEnd(), pan.colorStart());
    EXPECT_EQ(px(im, 100, 0), pan.colorEnd().rgb());
    EXPECT_EQ(px(im, 100, 99), down[99].rgb());
    EXPECT_EQ(down[99].rgb(), qRgb(2, 1, 2)); // one step short of colorStart, cut
    EXPECT_EQ(px(im, 100, 50), down[50].rgb());

    pan.setBackGroundEffect(bdVertIn);
    im = pan.renderImage();
    const GradientTable in = makeGradientTable(pan.colorStart(), pan.colorEnd());
    EXPECT_EQ(px(im, 0, 50), in[1].rgb());
    EXPECT_EQ(px(im, 99, 50), in[99].rgb());
    EXPECT_EQ(px(im, 100, 50), in[98].rgb());
    EXPECT_EQ(px(im, 199, 50), pan.colorStart().rgb());

    pan.setBackGroundEffect(bdFlat);
    EXPECT_EQ(px(pan.renderImage(), 10, 10), pan.colorStart().rgb());

    // Bevels lie over the background.
    pan.setBevelOuter(bvRaised);
    im = pan.renderImage();
    EXPECT_EQ(px(im, 0, 0), white);
    EXPECT_EQ(px(im, 199, 99), grey);

    // A colour that is no RGB value cannot start or end a gradient.
    EXPECT_THROW(makeGradientTable(QColor(), Qt::white), ControlRangeError);
    EXPECT_THROW(makeGradientTable(Qt::white, QColor()), ControlRangeError);
}

TEST(GradPan, TextEffectsUseTheirColours) {
    GradientPanel pan;
    pan.resize(120, 40);
    pan.setBackGroundEffect(bdFlat);
    pan.setColorStart(Qt::white);
    pan.setColorShadow(QColor(0, 0, 255));
    pan.setFont(captionFont(14));
    pan.setFontColor(QColor(255, 0, 0));
    pan.setCaption(QStringLiteral("■"));
    const QRect all(0, 0, 120, 40);
    const QRgb blue = qRgb(0, 0, 255), red = qRgb(255, 0, 0);
    pan.setTextEffect(tenone);
    QImage im = pan.renderImage();
    EXPECT_GT(countColour(im, all, blue), 10);
    EXPECT_EQ(countColour(im, all, red), 0);
    pan.setTextEffect(teShadow);
    im = pan.renderImage();
    EXPECT_GT(countColour(im, all, blue), 0);
    EXPECT_GT(countColour(im, all, red), 10);
    pan.setTextEffect(teRaised);
    EXPECT_GT(countColour(pan.renderImage(), all, black), 0);
    pan.setTextRotation(TrUp);
    pan.setTextEffect(tenone);
    EXPECT_GT(countColour(pan.renderImage(), all, blue), 10);
}

TEST(GradPan, MoveableZonesMoveAndSize) {
    QWidget parent;
    parent.resize(400, 300);
    auto* pan = new GradientPanel(&parent);
    pan->setGeometry(50, 50, 200, 100);
    EXPECT_EQ(pan->hitTest(100, 3), HTNOWHERE);
    pan->setMoveable(true);
    EXPECT_EQ(pan->hitTest(100, 3), HTTOP);
    EXPECT_EQ(pan->hitTest(100, 50), HTCAPTION);
    EXPECT_EQ(pan->hitTest(2, 2), HTTOPLEFT);
    EXPECT_EQ(pan->hitTest(2, 97), HTBOTTOMLEFT);
    EXPECT_EQ(pan->hitTest(2, 50), HTLEFT);
    EXPECT_EQ(pan->hitTest(197, 2), HTTOPRIGHT);
    EXPECT_EQ(pan->hitTest(197, 97), HTBOTTOMRIGHT);
    EXPECT_EQ(pan->hitTest(197, 50), HTRIGHT);
    EXPECT_EQ(pan->hitTest(100, 97), HTBOTTOM);
    EXPECT_EQ(pan->hitTest(100, 6), HTCAPTION);
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    int moves = 0;
    pan->onPanelMove = [&](ControlObject* sender) {
        EXPECT_EQ(sender, pan);
        ++moves;
    };
    auto drag = [&](QPoint from, QPoint by) {
        QTest::mousePress(pan, Qt::LeftButton, Qt::NoModifier, from);
        const QPointF to = from + by;
        QMouseEvent move(QEvent::MouseMove, to, pan->mapToGlobal(from) + by, Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(pan, &move);
        QTest::mouseRelease(pan, Qt::LeftButton, Qt::NoModifier,
                            pan->mapFromGlobal(pan->mapToGlobal(from) + by));
    };
    drag(QPoint(100, 50), QPoint(10, 20));
    EXPECT_EQ(pan->geometry(), QRect(60, 70, 200, 100));
    EXPECT_GE(moves, 1);
    drag(QPoint(198, 50), QPoint(30, 0));
    EXPECT_EQ(pan->geometry(), QRect(60, 70, 230, 100));
    drag(QPoint(3, 3), QPoint(-10, -10));
    EXPECT_EQ(pan->geometry(), QRect(50, 60, 240, 110));
    // A failing move handler reaches the program's handler; the move stands.
    QString reported;
    pan->onFailure = [&](const QString& m) { reported = m; };
    pan->onPanelMove = [](ControlObject*) { throw ControlError(QStringLiteral("moved")); };
    drag(QPoint(100, 50), QPoint(5, 5));
    pan->onFailure = nullptr;
    EXPECT_EQ(reported, QStringLiteral("moved"));
    EXPECT_EQ(pan->geometry(), QRect(55, 65, 240, 110));
}

void answerFolderDialog(const std::function<void(QFileDialog*)>& act) {
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, act] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<QFileDialog*>(w);
            if (dialog && dialog->isVisible()) {
                timer->stop();
                timer->deleteLater();
                act(dialog);
                return;
            }
        }
    });
    timer->start(10);
}

TEST(FolderDialog, CancelKeepsTheFolderAndAChoiceSetsIt) {
    QTemporaryDir root;
    ASSERT_TRUE(root.isValid());
    ASSERT_TRUE(QDir(root.path()).mkdir(QStringLiteral("data")));
    FolderDialog dialog;
    EXPECT_EQ(folderDlgFlags(dialog.option()), 0x0001u);
    dialog.setTitle(QStringLiteral("フォルダの選択"));
    dialog.setRootId(root.path());
    int initialized = 0;
    dialog.setParam(77);
    dialog.setBrowseCallBackProc([&](QWidget*, unsigned msg, const QString&, std::intptr_t data) {
        if (msg == BFFM_INITIALIZED && data == 77) ++initialized;
        return 0;
    });

    answerFolderDialog([](QFileDialog* d) { d->reject(); });
    EXPECT_FALSE(dialog.execute());
    EXPECT_TRUE(dialog.folderName().isEmpty());

    const QString chosen = QDir(root.path()).filePath(QStringLiteral("data"));
    answerFolderDialog([&](QFileDialog* d) {
        EXPECT_EQ(d->windowTitle(), QStringLiteral("フォルダの選択"));
        d->setDirectory(chosen);
        static_cast<QDialog*>(d)->accept();
    });
    EXPECT_TRUE(dialog.execute());
    EXPECT_EQ(dialog.folderName(), QDir::toNativeSeparators(chosen));
    EXPECT_EQ(dialog.param(), 77);
    EXPECT_EQ(initialized, 2);

    answerFolderDialog([](QFileDialog* d) { d->reject(); });
    EXPECT_FALSE(dialog.execute());
    EXPECT_EQ(dialog.folderName(), QDir::toNativeSeparators(chosen));
}

} // namespace
