// The main form: the controls of the sheet, the pipe type and its options,
// their look and their events.
#include "shell/utankaregist.h"

#include "controls/boxlabl.h"
#include "controls/gradpan.h"
#include "controls/numberedit.h"
#include "controls/strcgrid.h"
#include "platform/dialogs.h"
#include "sheet/sheettexts.h"
#include "shell/formwidgets.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTabBar>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QStringList GoodsItems = {
    QStringLiteral("ステンレス鋼鋼管"),
    QStringLiteral("ﾌﾗﾝｼﾞ付ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管FPA"),
    QStringLiteral("ﾌﾗﾝｼﾞ付ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管FPB"),
    QStringLiteral("ﾌﾗﾝｼﾞ付ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管FPD"),
    QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVA)"),
    QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVB)"),
    QStringLiteral("ﾌﾗﾝｼﾞ付硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(FVD)"),
    QStringLiteral("圧力配管用炭素鋼鋼管(黒)"),
    QStringLiteral("圧力配管用炭素鋼鋼管(白)"),
    QStringLiteral("遠心力鉄筋ｺﾝｸﾘ-ﾄ管"),
    QStringLiteral("鉛管"),
    QStringLiteral("給湯用塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管"),
    QStringLiteral("硬質塩化ﾋﾞﾆﾙ管(VP)"),
    QStringLiteral("消火配管用炭素鋼鋼管（白）　SGP"),
    QStringLiteral("消火用ﾎﾟﾘｴﾁﾚﾝ外面被覆銅管(PS)"),
    QStringLiteral("消火用ﾎﾟﾘｴﾁﾚﾝ外面被覆銅管(STPG-PS)"),
    QStringLiteral("消火用硬質塩化ﾋﾞﾆﾙ外面被覆銅管(STPG-VS)"),
    QStringLiteral("消火用硬質塩化ﾋﾞﾆﾙ外面被覆銅管(VS)"),
    QStringLiteral("水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PA"),
    QStringLiteral("水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PB"),
    QStringLiteral("水道用ﾎﾟﾘｴﾁﾚﾝ粉体ﾗｲﾆﾝｸﾞ鋼管PD"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VA)"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VB)"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管(VD)"),
    QStringLiteral("水道用硬質塩化ﾋﾞﾆﾙ管"),
    QStringLiteral("水道用耐衝撃性硬質塩化ﾋﾞﾆﾙ管(HIVP)"),
    QStringLiteral("鋳鉄管"),
    QStringLiteral("銅管（Ｍ）"),
    QStringLiteral("排水用ﾀ-ﾙｴﾎﾟｷｼ塗装鋼管"),
    QStringLiteral("排水用塩化ﾋﾞﾆﾙｺ-ﾃｨﾝｸﾞ鋼管"),
    QStringLiteral("排水用硬質塩化ﾋﾞﾆﾙﾗｲﾆﾝｸﾞ鋼管（黒）"),
    QStringLiteral("配管用炭素鋼鋼管（白）"),
    QStringLiteral("被覆銅管"),
    QStringLiteral("保温付被覆銅管"),
    QStringLiteral("冷媒用銅管"),
    QStringLiteral("冷媒用被覆銅管"),
};

const QStringList UseItems = {
    QStringLiteral("ガス"),
    QStringLiteral("プロパン"),
    QStringLiteral("給水"),
    QStringLiteral("給水、給湯"),
    QStringLiteral("給水、給湯、蒸気還管、冷温水"),
    QStringLiteral("給水、冷温水"),
    QStringLiteral("給水、冷却水"),
    QStringLiteral("給湯"),
    QStringLiteral("消火、冷却水、冷温水"),
    QStringLiteral("蒸気、油"),
    QStringLiteral("蒸気給気管、蒸気還管"),
    QStringLiteral("通気"),
    QStringLiteral("通気、消火、給湯、ﾌﾟﾛﾊﾟﾝ、冷却水、冷温水"),
    QStringLiteral("低圧蒸気用"),
    QStringLiteral("排水"),
    QStringLiteral("冷温水"),
    QStringLiteral("冷却水"),
    QStringLiteral("冷媒"),
};

const QStringList JointItems = {
    QStringLiteral("ＭＤ継手"),
    QStringLiteral("ねじ接合"),
    QStringLiteral("ねじ接合（管端防食継手）"),
    QStringLiteral("ハウジング形管継手"),
    QStringLiteral("フランジ接合"),
    QStringLiteral("メカニカル形継手"),
    QStringLiteral("圧縮、プレス"),
    QStringLiteral("拡管式"),
    QStringLiteral("溶接接合"),
};

const QString GridHint = QStringLiteral(
    "入力はセルをダブルクリックしてください。Shift+Enterで以降の行に同一のデータが入力されます。");

constexpr int RowHeight = 26;
constexpr int Col0Width = 50;

TEditCombo* nameCombo(QWidget* parent, const char* name, const QStringList& items) {
    auto* box = new TEditCombo(parent);
    box->setObjectName(QString::fromLatin1(name));
    // The lists stand in the order of their code page bytes: sorted as the
    // systems served sort them.
    box->addItems(items);
    box->SetText(QString());
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

QLabel* captionLabel(QWidget* parent, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

TNumberEdit* numberEdit(QWidget* parent, const char* name) {
    auto* edit = new TNumberEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->SetLimitOptions(LimitBoth);
    edit->SetValue(0);
    edit->setMinimumWidth(88);
    return edit;
}

TBoxLabel* boxCaption(QWidget* parent, const QString& text) {
    auto* box = new TBoxLabel(parent);
    box->SetCaption(text);
    box->setMinimumSize(QFontMetrics(parent->font()).horizontalAdvance(text) + 16, 24);
    return box;
}

} // namespace

void TFtankaregist::buildSheet() {
    auto* outer = new QHBoxLayout(CentralArea);
    outer->setContentsMargins(4, 4, 4, 4);
    outer->setSpacing(6);

    // Left: the emblem over the tree.
    auto* left = new QVBoxLayout;
    left->setSpacing(4);
    velmoraEmblem = new TGradPan(CentralArea);
    velmoraEmblem->setObjectName(QStringLiteral("velmoraEmblem"));
    velmoraEmblem->SetBackGroundEffect(bdDown);
    velmoraEmblem->setFixedHeight(84);
    auto* emblemLayout = new QVBoxLayout(velmoraEmblem);
    emblemLayout->setContentsMargins(10, 6, 10, 6);
    emblemLayout->setSpacing(0);
    Label11 = new QLabel(QStringLiteral("Ostrel"), velmoraEmblem);
    Label11->setObjectName(QStringLiteral("Label11"));
    Label9 = new QLabel(QStringLiteral("Qorvale"), velmoraEmblem);
    Label9->setObjectName(QStringLiteral("Label9"));
    ReleaseLabel = new QLabel(QStringLiteral("Release Version"), velmoraEmblem);
    ReleaseLabel->setObjectName(QStringLiteral("ReleaseLabel"));
    QFont big = Label9->font();
    big.setPointSize(big.pointSize() + 8);
    big.setBold(true);
    Label9->setFont(big);
    for (QLabel* l : {Label11, Label9, ReleaseLabel}) {
        l->setStyleSheet(QStringLiteral("color: white; background: transparent;"));
        emblemLayout->addWidget(l);
    }
    left->addWidget(velmoraEmblem);

    TreeView1 = new QTreeWidget(CentralArea);
    TreeView1->setObjectName(QStringLiteral("TreeView1"));
    TreeView1->setHeaderHidden(true);
    TreeView1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    TreeView1->setSelectionMode(QAbstractItemView::SingleSelection);
    TreeView1->setContextMenuPolicy(Qt::CustomContextMenu);
    TreeView1->setMinimumWidth(0);
    for (int g = 1; g <= 10; ++g) {
        auto* group = new QTreeWidgetItem(TreeView1, {GroupName(g)});
        for (int k = 1; k <= 20; ++k)
            new QTreeWidgetItem(group, {QStringLiteral("----")});
    }
    left->addWidget(TreeView1, 1);
    left->setContentsMargins(0, 0, 0, 0);
    // The tree's width is the user's: a splitter between it and the sheet.
    TreeSplitter = new QSplitter(Qt::Horizontal, CentralArea);
    TreeSplitter->setObjectName(QStringLiteral("TreeSplitter"));
    TreeSplitter->setChildrenCollapsible(false);
    auto* leftBox = new QWidget(TreeSplitter);
    leftBox->setObjectName(QStringLiteral("LeftPanel"));
    leftBox->setLayout(left);
    leftBox->setMinimumWidth(60);
    TreeSplitter->addWidget(leftBox);
    outer->addWidget(TreeSplitter);

    // Right: names, the sheet, the options; on a screen smaller than the
    // form they scroll rather than being cut off.
    SheetScroll = new QScrollArea(TreeSplitter);
    SheetScroll->setObjectName(QStringLiteral("SheetScroll"));
    SheetScroll->setWidgetResizable(true);
    SheetScroll->setFrameShape(QFrame::NoFrame);
    auto* rightBox = new QWidget(SheetScroll);
    rightBox->setObjectName(QStringLiteral("RightPanel"));
    auto* right = new QVBoxLayout(rightBox);
    right->setContentsMargins(0, 0, 0, 0);
    right->setSpacing(4);
    right->addWidget(buildNameBox());

    auto* sheet = new QWidget(CentralArea);
    sheet->setObjectName(QStringLiteral("SheetFrame"));
    auto* sheetLayout = new QVBoxLayout(sheet);
    sheetLayout->setContentsMargins(0, 0, 0, 0);
    sheetLayout->setSpacing(0);
    TabControl1 = new QTabBar(sheet);
    TabControl1->setObjectName(QStringLiteral("TabControl1"));
    TabControl1->setExpanding(false);
    TabControl1->setDrawBase(true);
    sheetLayout->addWidget(TabControl1);

    Panel5 = new QWidget(sheet);
    Panel5->setObjectName(QStringLiteral("Panel5"));
    Panel5->setAutoFillBackground(true);
    auto* panelLayout = new QGridLayout(Panel5);
    panelLayout->setContentsMargins(4, 4, 4, 4);
    panelLayout->setHorizontalSpacing(5);
    panelLayout->setVerticalSpacing(2);
    Label1 = new QLabel(QStringLiteral("資材単価"), Panel5);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2 = new QLabel(QStringLiteral("複合単価"), Panel5);
    Label2->setObjectName(QStringLiteral("Label2"));
    StrColGrid2 = new TStrColGrid(Panel5);
    StrColGrid2->setObjectName(QStringLiteral("StrColGrid2"));
    StrColGrid1 = new TStrColGrid(Panel5);
    StrColGrid1->setObjectName(QStringLiteral("StrColGrid1"));
    panelLayout->addWidget(Label1, 0, 0);
    panelLayout->addWidget(Label2, 0, 1);
    panelLayout->addWidget(StrColGrid2, 1, 0, Qt::AlignTop | Qt::AlignLeft);
    panelLayout->addWidget(StrColGrid1, 1, 1, Qt::AlignTop);
    panelLayout->setColumnStretch(1, 1);
    panelLayout->setRowStretch(2, 1);
    sheetLayout->addWidget(Panel5, 1);
    right->addWidget(sheet, 1);

    right->addWidget(buildOptions());
    SheetScroll->setWidget(rightBox);
    TreeSplitter->addWidget(SheetScroll);
    TreeSplitter->setStretchFactor(0, 0);
    TreeSplitter->setStretchFactor(1, 1);
    TreeSplitter->setSizes({180, DefaultWidth - 180});

    // The grids' shape and look.
    struct GridShape {
        TStrColGrid* grid;
        int cols;
        int fixedCols;
        bool rangeSelect;
    };
    for (const GridShape& s : {GridShape{StrColGrid2, Grid2Cols, 1, true},
                               GridShape{StrColGrid1, Grid1Cols, 4, false}}) {
        TStrColGrid* g = s.grid;
        g->SetColCount(s.cols);
        g->SetRowCount(GridRows);
        g->SetFixedCols(s.fixedCols);
        g->SetFixedRows(1);
        g->SetDefaultRowHeight(RowHeight);
        g->SetDefaultDrawing(false);
        g->SetFixedColor(TColor(SheetDark));
        g->SetFocusCellColor(TColor(SheetMark));
        g->SetFocusCellFontColor(TColor(SheetWhite));
        g->SetFocusCellFontColorEnabled(true);
        TGridOptions options{goFixedVertLine,     goFixedHorzLine, goVertLine, goHorzLine,
                             goDrawFocusSelected, goColSizing,     goEditing};
        if (s.rangeSelect) options += goRangeSelect;
        g->SetOptions(options);
        g->SetCtl3D(false); // flat fixed cells
        g->setToolTip(GridHint);
        TSCGCellParam* range = g->CellParams().Add();
        range->SetCol(1);
        range->SetColMax(2);
        range->SetRow(1);
        range->SetRowMax(14);
        range->SetRangeEnabled(true);
        range->SetAlignment(taRightJustify);
        range->SetCellColor(TColor(SheetWhite));
        range->SetCellColorEnabled(true);
        range->SetFontColor(TColor(SheetBlack));
        range->SetFontColorEnabled(true);
    }
    connectSheet();
}

QWidget* TFtankaregist::buildNameBox() {
    auto* row = new QWidget(CentralArea);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    auto* names = new QGroupBox(QStringLiteral("管種名"), row);
    names->setObjectName(QStringLiteral("GroupBoxNames"));
    auto* grid = new QGridLayout(names);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setVerticalSpacing(3);
    GOODSBOX = nameCombo(names, "GOODSBOX", GoodsItems);
    ComboBox4 = nameCombo(names, "ComboBox4", UseItems);
    ComboBox5 = nameCombo(names, "ComboBox5", JointItems);
    ci = nameCombo(
        names, "ci",
        {QStringLiteral("ｍ"), QStringLiteral("本"), QStringLiteral("kg"), QStringLiteral("枚")});
    ci->SetText(QStringLiteral("ｍ"));
    ci->setMinimumContentsLength(4);
    GOODSBOX->setMinimumContentsLength(24);
    ComboBox4->setMinimumContentsLength(14);
    ComboBox5->setMinimumContentsLength(12);
    CheckBox1 =
        new TToggleSwitch(QStringLiteral("計算結果を表示"), QStringLiteral("歩掛を表示"), names);
    CheckBox1->setObjectName(QStringLiteral("CheckBox1"));
    Button2 = new QPushButton(QStringLiteral("サイズ設定"), names);
    Button2->setObjectName(QStringLiteral("Button2"));
    Button3 = new QPushButton(QStringLiteral("標準歩掛選択"), names);
    Button3->setObjectName(QStringLiteral("Button3"));
    grid->addWidget(captionLabel(names, QStringLiteral("管材")), 0, 0);
    grid->addWidget(GOODSBOX, 0, 1, 1, 3);
    grid->addWidget(captionLabel(names, QStringLiteral("単位")), 0, 4);
    grid->addWidget(ci, 0, 5);
    grid->addWidget(captionLabel(names, QStringLiteral("用途")), 1, 0);
    grid->addWidget(ComboBox4, 1, 1);
    grid->addWidget(captionLabel(names, QStringLiteral("接合")), 1, 2);
    grid->addWidget(ComboBox5, 1, 3);
    grid->addWidget(CheckBox1, 2, 1);
    grid->addWidget(Button2, 2, 3, Qt::AlignLeft);
    grid->addWidget(Button3, 2, 3, Qt::AlignRight);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    layout->addWidget(names, 1);

    auto* page = new QGroupBox(QStringLiteral("材料単価建物/ページ"), row);
    page->setObjectName(QStringLiteral("GroupBoxPage"));
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(6, 4, 6, 4);
    StaticText1 = new QLineEdit(page);
    StaticText1->setObjectName(QStringLiteral("StaticText1"));
    StaticText2 = new QLineEdit(page);
    StaticText2->setObjectName(QStringLiteral("StaticText2"));
    pageLayout->addWidget(StaticText1);
    pageLayout->addWidget(StaticText2);
    pageLayout->addStretch(1);
    page->setMinimumWidth(200);
    layout->addWidget(page);

    stylegr = new TRadioGroup(
        QStringLiteral("印刷スタイル選択"),
        {QStringLiteral("歩掛"), QStringLiteral("単価"), QStringLiteral("歩掛+単価")}, 1, row);
    layout->addWidget(stylegr);

    Button1 = new QPushButton(QStringLiteral("登　録"), row);
    Button1->setObjectName(QStringLiteral("Button1"));
    Button1->setMinimumSize(110, 64);
    QFont f = Button1->font();
    f.setPointSize(f.pointSize() + 3);
    f.setBold(true);
    Button1->setFont(f);
    layout->addWidget(Button1, 0, Qt::AlignVCenter);
    return row;
}

QWidget* TFtankaregist::buildOptions() {
    auto* row = new QWidget(CentralArea);
    row->setObjectName(QStringLiteral("OptionPanel"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    auto* modes = new QVBoxLayout;
    SBorRadio1 =
        new TRadioGroup(QStringLiteral("モード"),
                        {QStringLiteral("配管モード"), QStringLiteral("冷媒モード")}, 2, row);
    Scalc_opt1 = new TRadioGroup(QStringLiteral("その他の計算方法"),
                                 {QStringLiteral("（配管工費＋はつり補修）×歩掛"),
                                  QStringLiteral("（配管材～はつり補修の合計）×歩掛")},
                                 1, row);
    modes->addWidget(SBorRadio1);
    modes->addWidget(Scalc_opt1);
    layout->addLayout(modes);

    SBorRadio4 = new TRadioGroup(QStringLiteral("各要素単位の計算処理"),
                                 {QStringLiteral("端数処理"), QStringLiteral("小数1位有効"),
                                  QStringLiteral("小数2位有効"), QStringLiteral("小数3位有効")},
                                 1, row);
    SBorRadio8 = new TRadioGroup(
        QStringLiteral("小数以下処理"),
        {QStringLiteral("切り上げ"), QStringLiteral("切り捨て"), QStringLiteral("四捨五入")}, 1,
        row);
    SBorRadio14 = new TRadioGroup(QStringLiteral("採用有効桁設定[提出]"),
                                  {QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("100"),
                                   QStringLiteral("1000"), QStringLiteral("有効3桁"),
                                   QStringLiteral("有効4桁")},
                                  2, row);
    SBorRadio11 = new TRadioGroup(
        QStringLiteral("有効桁以下"),
        {QStringLiteral("切り上げ"), QStringLiteral("切り捨て"), QStringLiteral("四捨五入")}, 1,
        row);
    for (TRadioGroup* g : {SBorRadio4, SBorRadio8, SBorRadio14, SBorRadio11})
        layout->addWidget(g);

    // Base labour costs.
    auto* labour = new QGroupBox(QStringLiteral("基礎工費"), row);
    labour->setObjectName(QStringLiteral("GroupBoxLabour"));
    auto* labourLayout = new QGridLayout(labour);
    labourLayout->setContentsMargins(6, 4, 6, 4);
    GpayDay1 = numberEdit(labour, "GpayDay1");
    GpayDay_N = numberEdit(labour, "GpayDay_N");
    labourLayout->addWidget(boxCaption(labour, QStringLiteral("提　出")), 0, 0);
    labourLayout->addWidget(GpayDay1, 0, 1);
    labourLayout->addWidget(boxCaption(labour, QStringLiteral("原　価")), 1, 0);
    labourLayout->addWidget(GpayDay_N, 1, 1);
    labourLayout->setRowStretch(2, 1);
    layout->addWidget(labour);

    // The rate on the list price, and the two groups beside it; they stay
    // usable whichever way the check box stands.
    auto* rateBox = new QWidget(row);
    rateBox->setObjectName(QStringLiteral("RatePanel"));
    auto* rateLayout = new QVBoxLayout(rateBox);
    rateLayout->setContentsMargins(0, 0, 0, 0);
    rateLayout->setSpacing(2);
    CheckGroupBox1 = new TCheckBox(QStringLiteral("単価に掛率を使用"), rateBox);
    CheckGroupBox1->setObjectName(QStringLiteral("CheckGroupBox1"));
    rateLayout->addWidget(CheckGroupBox1);
    auto* rates = new QGroupBox(QStringLiteral("掛率を指定"), rateBox);
    auto* ratesLayout = new QGridLayout(rates);
    ratesLayout->setContentsMargins(6, 4, 6, 4);
    avr_1 = numberEdit(rates, "avr_1");
    avr_N = numberEdit(rates, "avr_N");
    avr_1->setMinimumWidth(64);
    avr_N->setMinimumWidth(64);
    ratesLayout->addWidget(boxCaption(rates, QStringLiteral("提   出=定価×指定")), 0, 0);
    ratesLayout->addWidget(avr_1, 0, 1);
    ratesLayout->addWidget(new QLabel(QStringLiteral("%"), rates), 0, 2);
    ratesLayout->addWidget(boxCaption(rates, QStringLiteral("原　価=定価×指定")), 1, 0);
    ratesLayout->addWidget(avr_N, 1, 1);
    ratesLayout->addWidget(new QLabel(QStringLiteral("%"), rates), 1, 2);
    rateLayout->addWidget(rates);
    auto* unit = new QGroupBox(QStringLiteral("単価計算処理"), rateBox);
    auto* unitLayout = new QHBoxLayout(unit);
    unitLayout->setContentsMargins(6, 4, 6, 4);
    ComboBox1 = new TFixedList({QStringLiteral("有効桁1"), QStringLiteral("有効桁10"),
                                QStringLiteral("有効桁100"), QStringLiteral("有効桁1000"),
                                QStringLiteral("有効3桁"), QStringLiteral("有効4桁")},
                               unit);
    ComboBox1->setObjectName(QStringLiteral("ComboBox1"));
    ComboBox3 =
        new TFixedList({QStringLiteral("有効桁以下切り上げ"), QStringLiteral("有効桁以下切り捨て"),
                        QStringLiteral("有効桁以下四捨五入")},
                       unit);
    ComboBox3->setObjectName(QStringLiteral("ComboBox3"));
    unitLayout->addWidget(ComboBox1);
    unitLayout->addWidget(ComboBox3, 1);
    rateLayout->addWidget(unit);
    layout->addWidget(rateBox);
    layout->addStretch(1);

    // Names and defaults before the first pipe type is shown.
    const std::pair<TRadioGroup*, const char*> groups[] = {
        {SBorRadio1, "SBorRadio1"}, {Scalc_opt1, "Scalc_opt1"},   {SBorRadio4, "SBorRadio4"},
        {SBorRadio8, "SBorRadio8"}, {SBorRadio14, "SBorRadio14"}, {SBorRadio11, "SBorRadio11"},
        {stylegr, "stylegr"}};
    for (const auto& [g, name] : groups) {
        g->setObjectName(QString::fromLatin1(name));
        g->SetItemIndex(0);
    }
    SBorRadio14->SetItemIndex(3);
    ComboBox1->SetItemIndex(0);
    ComboBox3->SetItemIndex(0);
    return row;
}

void TFtankaregist::connectSheet() {
    for (TRadioGroup* g :
         {SBorRadio1, Scalc_opt1, SBorRadio4, SBorRadio8, SBorRadio14, SBorRadio11})
        g->OnClick = [this] { ApplyControls(); };
    ComboBox1->OnSelect = [this] { ApplyControls(); };
    ComboBox3->OnSelect = [this] { ApplyControls(); };
    CheckGroupBox1->OnClick = [this] { ApplyControls(); };
    CheckBox1->OnClick = [this] {
        UpdateGrid1Editing();
        ApplyControls();
    };
    for (TEditCombo* box : {GOODSBOX, ComboBox4, ComboBox5, ci})
        box->OnKeyPress = [this](int key, bool& handled) { GOODSBOXKeyPress(key, handled); };
    for (TNumberEdit* edit : {avr_1, avr_N, GpayDay1, GpayDay_N})
        edit->installEventFilter(this);

    connect(Button1, &QPushButton::clicked, this, &TFtankaregist::Button1Click);
    connect(Button2, &QPushButton::clicked, ActionSizeSet, &QAction::trigger);
    connect(Button3, &QPushButton::clicked, ActionLoadparts, &QAction::trigger);
    auto followAction = [](QPushButton* button, QAction* action) {
        button->setEnabled(action->isEnabled());
        connect(action, &QAction::changed, button,
                [button, action] { button->setEnabled(action->isEnabled()); });
    };
    followAction(Button2, ActionSizeSet);
    followAction(Button3, ActionLoadparts);

    connect(TreeView1, &QTreeWidget::itemClicked, this, [this] { TreeView1Click(); });
    TreeView1->installEventFilter(this);
    TreeView1->viewport()->installEventFilter(this);
    Panel5->installEventFilter(this);
    connect(TreeView1, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        PopupMenu1->popup(TreeView1->viewport()->mapToGlobal(pos));
    });
    connect(TabControl1, &QTabBar::currentChanged, this, [this] {
        if (!settingTabs_) TabControl1Change();
    });
    StrColGrid1->OnClick = [this](TControlObject*) { StrColGrid1Click(); };
    StrColGrid2->OnClick = [this](TControlObject*) { StrColGrid2Click(); };
    StrColGrid1->OnSelectCell = [this](TControlObject*, int c, int r, bool& can) {
        StrColGrid1SelectCell(c, r, can);
    };
    StrColGrid2->OnSelectCell = [this](TControlObject*, int c, int r, bool& can) {
        StrColGrid2SelectCell(c, r, can);
    };
    StrColGrid2->OnSetEditText = [this](TControlObject*, int c, int r, const QString& v) {
        StrColGrid2SetEditText(c, r, v);
    };
    StrColGrid1->OnKeyDown = [this](TControlObject*, int& key, TShiftState shift) {
        StrColGrid1KeyDown(key, shift);
    };
    StrColGrid2->OnKeyDown = [this](TControlObject*, int& key, TShiftState shift) {
        StrColGrid2KeyDown(key, shift);
    };
    ActionSizeSet->setEnabled(true);
    connect(ActionSizeSet, &QAction::triggered, this, &TFtankaregist::ActionSizeSetExecute);
    connect(N1, &QAction::triggered, this, &TFtankaregist::N1Click);
    N1->setEnabled(true);
}

bool TFtankaregist::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && TreeView1 && watched == TreeView1) {
        // Once the tree has moved its selection by the key.
        QTimer::singleShot(0, this, [this] { AfterTreeInput(false); });
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (watched == avr_1 || watched == avr_N) {
                ApplyControls();
                return true;
            }
            if (watched == GpayDay1 || watched == GpayDay_N) {
                ApplyControls();
                (watched == GpayDay1 ? GpayDay_N : GpayDay1)->setFocus(Qt::TabFocusReason);
                return true;
            }
        }
    } else if (event->type() == QEvent::Resize && watched == Panel5) {
        FormResize();
    } else if (TreeView1 && watched == TreeView1->viewport() && event->type() == QEvent::ToolTip) {
        // A long name cut off by the tree's width reads whole in the hint.
        auto* help = static_cast<QHelpEvent*>(event);
        if (QTreeWidgetItem* item = TreeView1->itemAt(help->pos()))
            QToolTip::showText(help->globalPos(), item->text(0), TreeView1->viewport());
        else
            QToolTip::hideText();
        return true;
    } else if (TreeView1 && watched == TreeView1->viewport() &&
               (event->type() == QEvent::MouseButtonPress ||
                event->type() == QEvent::MouseButtonDblClick ||
                event->type() == QEvent::MouseButtonRelease)) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        // The right button only opens the pop-up menu, which acts on the pipe
        // type on the sheet: it must not move the selection away from it.
        if (mouse->button() == Qt::RightButton) return true;
        if (event->type() == QEvent::MouseButtonRelease) {
            // The Shift key counts as the release carries it; the naming
            // follows the click that the same release makes.
            const bool shift = mouse->modifiers().testFlag(Qt::ShiftModifier);
            QTimer::singleShot(0, this, [this, shift] { AfterTreeInput(shift); });
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void TFtankaregist::SetupSheet() {
    // Fixed captions.
    StrColGrid2->SetCells(1, 0, QStringLiteral("提　出"));
    StrColGrid2->SetCells(2, 0, QStringLiteral("原　価"));
    StrColGrid2->SetCells(3, 0, QStringLiteral("定　価"));
    StrColGrid1->SetCells(0, 0, QStringLiteral("No"));
    StrColGrid1->SetCells(2, 0, QStringLiteral("複合単価"));
    StrColGrid1->SetCells(3, 0, QStringLiteral("提出単価"));
    StrColGrid1->SetCells(4, 0, QStringLiteral("管"));
    StrColGrid1->SetCells(8, 0, QStringLiteral("配管工"));

    // Cell styles.
    const TColor dark(SheetDark), white(SheetWhite), black(SheetBlack);
    for (int c = 0; c < Grid1Cols; ++c) {
        StrColGrid1->SetCellColors(c, 0, dark);
        StrColGrid1->SetCellFontColors(c, 0, white);
        StrColGrid1->SetCellAlignments(c, 0, taCenter);
        StrColGrid1->SetCellFontWidths(c, 0, 1);
    }
    for (int c = 1; c < Grid2Cols; ++c) {
        StrColGrid2->SetCellColors(c, 0, dark);
        StrColGrid2->SetCellFontColors(c, 0, white);
        StrColGrid2->SetCellAlignments(c, 0, taCenter);
        StrColGrid2->SetCellFontWidths(c, 0, 1);
    }
    for (int r = 1; r < GridRows; ++r) {
        for (TStrColGrid* g : {StrColGrid1, StrColGrid2}) {
            g->SetCellColors(0, r, dark);
            g->SetCellFontColors(0, r, white);
            g->SetCellAlignments(0, r, taCenter);
            g->SetCellFontWidths(0, r, 1);
        }
        for (int c = 1; c < Grid1Cols; ++c) {
            const bool darkColumn = c == 3 || c == 8;
            StrColGrid1->SetCellColors(c, r, darkColumn ? dark : white);
            StrColGrid1->SetCellFontColors(c, r, darkColumn ? white : black);
            StrColGrid1->SetCellAlignments(c, r, taRightJustify);
            StrColGrid1->SetCellFontWidths(c, r, 1);
        }
        for (int c = 1; c < Grid2Cols; ++c) {
            StrColGrid2->SetCellColors(c, r, white);
            StrColGrid2->SetCellAlignments(c, r, taRightJustify);
            StrColGrid2->SetCellFontWidths(c, r, 1);
        }
    }
    FormResize();
}

void TFtankaregist::FormResize() {
    if (!Panel5 || !StrColGrid1) return;
    const int w = Panel5->width();
    // The form's rule, (w - 120) / 13, unless the panel's margins and the
    // grid lines here leave less room: the last column must not be cut off.
    const QMargins m = Panel5->layout()->contentsMargins();
    const auto* grid = static_cast<QGridLayout*>(Panel5->layout());
    const int lines = (StrColGrid1->ColCount() + 1) * StrColGrid1->GridLineWidth() + 2;
    const int room = w - m.left() - m.right() - grid->horizontalSpacing() - 55 - Col0Width - lines;
    const int c = std::max(0, std::min((w - 120) / 13, room / 13));
    for (TStrColGrid* g : {StrColGrid1, StrColGrid2}) {
        g->SetColWidths(0, Col0Width);
        for (int col = 1; col < g->ColCount(); ++col)
            g->SetColWidths(col, c);
        g->setFixedHeight(g->GridHeight() + 2);
    }
    StrColGrid2->setFixedWidth(3 * c + 55);
    // StrColGrid1 takes the rest of the panel; its columns fit in it.
    StrColGrid1->setMinimumWidth(0);
}
