// The painted label, the gradient panel and the folder dialog, and the
// sample picture of all controls.
#include "controls/boxlabl.h"
#include "controls/controlssample.h"
#include "controls/fldrdlg.h"
#include "controls/gradpan.h"
#include "controls/strcgrid.h"

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

TColor px(const QImage& im, int x, int y) {
    return FromQColor(QColor(im.pixel(x, y)));
}

int countColour(const QImage& im, const TRect& r, TColor c) {
    int n = 0;
    for (int y = r.Top; y < r.Bottom; ++y)
        for (int x = r.Left; x < r.Right; ++x)
            if (px(im, x, y) == c) ++n;
    return n;
}

TEST(BoxLabel, NumbersBecomeTheCaption) {
    BoxLabel label;
    EXPECT_EQ(label.width(), 70);
    EXPECT_EQ(label.height(), 20);
    label.SetDecimals(2);
    label.SetAsFloat(1.5);
    EXPECT_EQ(label.Caption(), QStringLiteral("1.50"));
    label.SetFormatString(QStringLiteral("%d"));
    label.SetAsFloat(1.5);
    EXPECT_EQ(label.Caption(), QStringLiteral("Format Error"));
    EXPECT_EQ(label.StoredValue(), 1.5);
    label.SetAsInteger(42);
    EXPECT_EQ(label.Caption(), QStringLiteral("42"));
    label.SetFormatString(QStringLiteral("%.1f %%"));
    label.SetAsInteger(42);
    EXPECT_EQ(label.Caption(), QStringLiteral("Format Error"));
    label.SetAsFloat(2.25);
    EXPECT_EQ(label.Caption(), QStringLiteral("2.2 %"));
    label.SetFormatString(QStringLiteral("%8.2n"));
    label.SetAsFloat(12345.678);
    EXPECT_EQ(label.Caption(), QStringLiteral("12,345.68"));
    label.SetCaption(QStringLiteral("abc"));
    EXPECT_EQ(label.AsFloat(), 0.0);
    label.SetCaption(QStringLiteral(" 7 "));
    EXPECT_EQ(label.AsInteger(), 7);
}

TEST(BoxLabel, BevelsAndBorder) {
    BoxLabel label;
    label.resize(60, 24);
    QImage im = label.RenderImage();
    const TColor shadow = ColorToRGB(clBtnShadow);
    EXPECT_EQ(px(im, 0, 0), clWhite); // outer raised: light top left
    EXPECT_EQ(px(im, 0, 23), clWhite);
    EXPECT_EQ(px(im, 59, 23), shadow); // dark bottom right
    EXPECT_EQ(px(im, 59, 0), shadow);
    EXPECT_EQ(px(im, 1, 1), shadow); // inner lowered: dark top left
    EXPECT_EQ(px(im, 58, 22), clWhite);

    label.SetBevelInner(bvNone);
    label.SetBevelOuter(bvNone);
    im = label.RenderImage();
    const TColor face = ColorToRGB(clBtnFace);
    EXPECT_EQ(countColour(im, Rect(0, 0, 60, 24), face), 60 * 24);

    label.SetBorderStyle(bsSingle);
    im = label.RenderImage();
    EXPECT_EQ(px(im, 0, 0), clBlack);
    EXPECT_EQ(px(im, 59, 23), clBlack);
    EXPECT_EQ(px(im, 1, 1), face);
}

TEST(BoxLabel, DisabledTextIsDrawnTwice) {
    BoxLabel label;
    label.resize(80, 30);
    label.SetBevelInner(bvNone);
    label.SetBevelOuter(bvNone);
    label.SetFont(FontSpec(DefaultFontName(), 14, clBlack));
    label.SetCaption(QStringLiteral("■■"));
    const TRect all = Rect(0, 0, 80, 30);
    QImage im = label.RenderImage();
    EXPECT_EQ(countColour(im, all, clWhite), 0);
    EXPECT_GT(countColour(im, all, clBlack), 20);
    label.setEnabled(false);
    im = label.RenderImage();
    EXPECT_EQ(countColour(im, all, clBlack), 0);
    EXPECT_GT(countColour(im, all, clGray), 20);
    EXPECT_GT(countColour(im, all, clWhite), 0); // the white pass shows one pixel down right
    // The white pass lies one pixel down and right of the grey one.
    int whiteBelowGrey = 0;
    for (int y = 1; y < 30; ++y)
        for (int x = 1; x < 80; ++x)
            if (px(im, x, y) == clWhite && px(im, x - 1, y - 1) == clGray) ++whiteBelowGrey;
    EXPECT_GT(whiteBelowGrey, 0);
}

TEST(GradPan, GradientsRunAsTheTablesSay) {
    GradientPanel pan;
    pan.resize(200, 100);
    pan.SetBevelOuter(bvNone);
    pan.SetColorStart(RGBColor(0, 0, 0));
    pan.SetColorEnd(RGBColor(200, 100, 255));
    pan.SetBackGroundEffect(bdDown);
    QImage im = pan.RenderImage();
    const GrArray down = MakeGradientTable(pan.ColorEnd(), pan.ColorStart());
    EXPECT_EQ(px(im, 100, 0), pan.ColorEnd());
    EXPECT_EQ(px(im, 100, 99), down[99]);
    EXPECT_EQ(down[99], RGBColor(2, 1, 2)); // one step short of ColorStart, cut
    EXPECT_EQ(px(im, 100, 50), down[50]);

    pan.SetBackGroundEffect(bdVertIn);
    im = pan.RenderImage();
    const GrArray in = MakeGradientTable(pan.ColorStart(), pan.ColorEnd());
    EXPECT_EQ(px(im, 0, 50), in[1]);
    EXPECT_EQ(px(im, 99, 50), in[99]);
    EXPECT_EQ(px(im, 100, 50), in[98]);
    EXPECT_EQ(px(im, 199, 50), pan.ColorStart());

    pan.SetBackGroundEffect(bdFlat);
    EXPECT_EQ(px(pan.RenderImage(), 10, 10), pan.ColorStart());

    // Bevels lie over the background.
    pan.SetBevelOuter(bvRaised);
    im = pan.RenderImage();
    EXPECT_EQ(px(im, 0, 0), clWhite);
    EXPECT_EQ(px(im, 199, 99), clGray);

    EXPECT_THROW(MakeGradientTable(clBtnFace, clWhite), ControlRangeError);
}

TEST(GradPan, TextEffectsUseTheirColours) {
    GradientPanel pan;
    pan.resize(120, 40);
    pan.SetBackGroundEffect(bdFlat);
    pan.SetColorStart(clWhite);
    pan.SetColorShadow(RGBColor(0, 0, 255));
    pan.SetFont(FontSpec(DefaultFontName(), 14, RGBColor(255, 0, 0)));
    pan.SetCaption(QStringLiteral("■"));
    const TRect all = Rect(0, 0, 120, 40);
    pan.SetTextEffect(tenone);
    QImage im = pan.RenderImage();
    EXPECT_GT(countColour(im, all, RGBColor(0, 0, 255)), 10);
    EXPECT_EQ(countColour(im, all, RGBColor(255, 0, 0)), 0);
    pan.SetTextEffect(teShadow);
    im = pan.RenderImage();
    EXPECT_GT(countColour(im, all, RGBColor(0, 0, 255)), 0);
    EXPECT_GT(countColour(im, all, RGBColor(255, 0, 0)), 10);
    pan.SetTextEffect(teRaised);
    EXPECT_GT(countColour(pan.RenderImage(), all, clBlack), 0);
    pan.SetTextRotation(TrUp);
    pan.SetTextEffect(tenone);
    EXPECT_GT(countColour(pan.RenderImage(), all, RGBColor(0, 0, 255)), 10);
}

TEST(GradPan, MoveableZonesMoveAndSize) {
    QWidget parent;
    parent.resize(400, 300);
    auto* pan = new GradientPanel(&parent);
    pan->setGeometry(50, 50, 200, 100);
    EXPECT_EQ(pan->HitTest(100, 3), HTNOWHERE);
    pan->SetMoveable(true);
    EXPECT_EQ(pan->HitTest(100, 3), HTTOP);
    EXPECT_EQ(pan->HitTest(100, 50), HTCAPTION);
    EXPECT_EQ(pan->HitTest(2, 2), HTTOPLEFT);
    EXPECT_EQ(pan->HitTest(2, 97), HTBOTTOMLEFT);
    EXPECT_EQ(pan->HitTest(2, 50), HTLEFT);
    EXPECT_EQ(pan->HitTest(197, 2), HTTOPRIGHT);
    EXPECT_EQ(pan->HitTest(197, 97), HTBOTTOMRIGHT);
    EXPECT_EQ(pan->HitTest(197, 50), HTRIGHT);
    EXPECT_EQ(pan->HitTest(100, 97), HTBOTTOM);
    EXPECT_EQ(pan->HitTest(100, 6), HTCAPTION);
    parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
    int moves = 0;
    pan->OnPanelMove = [&](ControlObject* sender) {
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
    pan->OnFailure = [&](const QString& m) { reported = m; };
    pan->OnPanelMove = [](ControlObject*) { throw ControlError(QStringLiteral("moved")); };
    drag(QPoint(100, 50), QPoint(5, 5));
    pan->OnFailure = nullptr;
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
    EXPECT_EQ(FolderDlgFlags(dialog.Option()), 0x0001u);
    dialog.SetTitle(QStringLiteral("フォルダの選択"));
    dialog.SetRootID(root.path());
    int initialized = 0;
    dialog.SetParam(77);
    dialog.SetBrowseCallBackProc([&](QWidget*, unsigned msg, const QString&, std::intptr_t data) {
        if (msg == BFFM_INITIALIZED && data == 77) ++initialized;
        return 0;
    });

    answerFolderDialog([](QFileDialog* d) { d->reject(); });
    EXPECT_FALSE(dialog.Execute());
    EXPECT_TRUE(dialog.FolderName().isEmpty());

    const QString chosen = QDir(root.path()).filePath(QStringLiteral("data"));
    answerFolderDialog([&](QFileDialog* d) {
        EXPECT_EQ(d->windowTitle(), QStringLiteral("フォルダの選択"));
        d->setDirectory(chosen);
        static_cast<QDialog*>(d)->accept();
    });
    EXPECT_TRUE(dialog.Execute());
    EXPECT_EQ(dialog.FolderName(), QDir::toNativeSeparators(chosen));
    EXPECT_EQ(dialog.Param(), 77);
    EXPECT_EQ(initialized, 2);

    answerFolderDialog([](QFileDialog* d) { d->reject(); });
    EXPECT_FALSE(dialog.Execute());
    EXPECT_EQ(dialog.FolderName(), QDir::toNativeSeparators(chosen));
}

TEST(Sample, ShowsTheGridWithItsFocusFrame) {
    std::unique_ptr<QWidget> sample(CreateControlsSample());
    const QImage shot = GrabControlsSample(sample.get());
    ASSERT_FALSE(shot.isNull());
    PriceGrid* grid = SampleGrid(sample.get());
    ASSERT_TRUE(grid->GridFocused());
    const TRect r = grid->CellRect(grid->Col(), grid->Row());
    const QPoint o = grid->mapTo(sample.get(), QPoint(0, 0));
    const TColor under = px(shot, o.x() + r.Left + 1, o.y() + r.Top + 1);
    EXPECT_EQ(under, 12615808);
    EXPECT_EQ(px(shot, o.x() + r.Left + 2, o.y() + r.Top), TColor(~under & 0xFFFFFF));
    EXPECT_EQ(px(shot, o.x() + r.Left + 1, o.y() + r.Top), under);
}

} // namespace
