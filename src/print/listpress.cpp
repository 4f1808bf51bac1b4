#include "print/listpress.h"

#include "document/pipetypedocument.h"
#include "output/printhandoff.h"
#include "platform/consoledialogs.h"
#include "platform/datapaths.h"
#include "platform/dialogs.h"
#include "print/pricesheet.h"
#include "print/printjob.h"
#include "shell/batchtool.h"
#include "store/modulewrappersqlite.h"
#include "store/pipetypestore.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QTimer>

namespace {

QString u(const char* t) {
    return QString::fromUtf8(t);
}

const char* const Usage =
    "使い方: listpress データフォルダー;\n"
    "        listpress --pdf ファイル.pdf データフォルダー;\n"
    "        listpress --screenshot 画像.png データフォルダー;\n"
    "        listpress --help | --version\n"
    "データフォルダーの printdata にある Print.conf、print_header.dat、print_Data.dat と\n"
    "Print.conf が指すスタイルファイルから、A4 横の複合単価計算書を作ります。\n"
    "  (引数なし)      印刷プレビューを開き、プリンターへの印刷や PDF 保存ができます。\n"
    "  --pdf FILE      ウィンドウを出さずに PDF ファイルを書きます。\n"
    "  --screenshot P  プレビューを開いて、その画面を PNG に保存して終わります。\n"
    "終了コード: 0 成功、1 入力の誤りや書き込みの失敗、2 引数の誤り。\n";

struct Args {
    QString pdf;
    QString screenshot;
    QString root;
    bool help = false;
};

QString parse(const QStringList& args, Args& a) {
    for (int i = 0; i < int(args.size()); ++i) {
        const QString& s = args[i];
        if (s == QLatin1String("--help") || s == QLatin1String("-h")) {
            a.help = true;
        } else if (s == QLatin1String("--pdf") || s == QLatin1String("--screenshot")) {
            if (i + 1 >= int(args.size())) return u("%1 にはファイル名が必要です。").arg(s);
            (s == QLatin1String("--pdf") ? a.pdf : a.screenshot) = args[++i];
        } else if (s.startsWith(QLatin1String("--"))) {
            return u("知らないオプションです: %1").arg(s);
        } else if (a.root.isEmpty()) {
            a.root = dataRootOfArgument(s);
        } else {
            return u("引数が多すぎます: %1").arg(s);
        }
    }
    if (!a.help && a.root.isEmpty()) return u("データフォルダーが指定されていません。");
    return QString();
}

void setLandscapeA4(QPrinter& printer) {
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                      QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    printer.setFullPage(true);
}

int preview(const PrintJob& job, const QString& screenshot, QTextStream& err) {
    QPrinter printer(QPrinter::HighResolution);
    setLandscapeA4(printer);
    printer.setDocName(job.style.title + u("　") + job.dataTitle);
    QPrintPreviewDialog dialog(&printer);
    dialog.setWindowTitle(u("印刷プレビュー - ") + job.style.title + u("（") + job.style.name +
                          u("）"));
    dialog.resize(1280, 860);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* p) {
        QString reason;
        if (!paintPriceSheets(*p, job, reason)) err << reason << "\n";
    });
    if (!screenshot.isEmpty()) {
        int result = 1;
        QTimer::singleShot(800, &dialog, [&] {
            if (auto* w = dialog.findChild<QPrintPreviewWidget*>()) w->fitToWidth();
            QCoreApplication::processEvents();
            result = dialog.grab().save(screenshot) ? 0 : 1;
            if (result) err << u("画像 %1 を書けません。").arg(screenshot) << "\n";
            dialog.reject();
        });
        dialog.exec();
        return result;
    }
    dialog.exec();
    return 0;
}

} // namespace

QString listpressUsage() {
    return QString::fromUtf8(Usage);
}

bool listpressNeedsNoWindow(const QStringList& args) {
    return args.contains(QStringLiteral("--pdf")) || args.contains(QStringLiteral("--help")) ||
           args.contains(QStringLiteral("-h"));
}

int runListpress(const QStringList& args, Dialogs& dialogs, QTextStream& out, QTextStream& err) {
    Args a;
    const QString bad = parse(args, a);
    if (!bad.isEmpty()) {
        err << "listpress: " << bad << "\n" << QString::fromUtf8(Usage);
        return 2;
    }
    if (a.help) {
        out << QString::fromUtf8(Usage);
        return 0;
    }
    const bool window = a.pdf.isEmpty();
    PrintJob job;
    try {
        job = readPrintJob(a.root);
    } catch (const PrintInput& e) {
        err << "listpress: " << e.message() << "\n";
        if (window && a.screenshot.isEmpty())
            dialogs.taskDialog(nullptr, QStringLiteral("listpress"), u("印刷できません"),
                               TaskDialog::IconError, TaskDialog::ButtonOk, e.message());
        return 1;
    }
    if (!job.styleNote.isEmpty()) err << "listpress: " << job.styleNote << "\n";
    if (!window) {
        QString reason;
        if (!writePriceSheetPdf(job, a.pdf, reason)) {
            err << "listpress: " << reason << "\n";
            return 1;
        }
        out << u("%1 を書きました（%2 ページ）。").arg(a.pdf).arg(sheetPages(job).size()) << "\n";
        return 0;
    }
    return preview(job, a.screenshot, err);
}

int runPrintTool(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString usage =
        u("usage: qorvale-tool print --group G --kan K --pdf FILE [--style-index N] "
          "[--launch LAUNCHSTRING]\n  N is the print style: 0 歩掛, 1 単価, "
          "2 歩掛+単価 (default 0).\n");
    int group = 0, kan = 0, style = 0;
    QString pdf, launch;
    for (int i = 1; i < int(args.size()); ++i) {
        const QString& name = args[i];
        if (i + 1 >= int(args.size())) {
            err << "qorvale-tool: " << name << " needs a value\n" << usage;
            return 2;
        }
        const QString value = args[++i];
        bool ok = false;
        const int v = value.toInt(&ok);
        if (name == QLatin1String("--pdf")) {
            pdf = value;
        } else if (name == QLatin1String("--launch")) {
            launch = value;
        } else if (name == QLatin1String("--group") && ok && v >= 1 && v <= 10) {
            group = v;
        } else if (name == QLatin1String("--kan") && ok && v >= 1 && v <= 20) {
            kan = v;
        } else if (name == QLatin1String("--style-index") && ok && v >= 0 && v <= 2) {
            style = v;
        } else {
            err << "qorvale-tool: bad argument: " << name << " " << value << "\n" << usage;
            return 2;
        }
    }
    if (group == 0 || kan == 0 || pdf.isEmpty()) {
        err << "qorvale-tool: --group, --kan and --pdf are needed\n" << usage;
        return 2;
    }
    DataPaths paths;
    if (!findToolDatabase(launch, paths, err)) return 1;
    try {
        PipeTypeDocument doc;
        SqliteDatabase db(paths.exDatabase);
        doc.load(db, group, kan);
        doc.calculateAll();
        PrintHandOff h;
        h.dataRoot = paths.dataRoot;
        h.styleIndex = style;
        h.iconPath = applicationIconPath();
        h.date = QDate::currentDate();
        writePrintHandOff(h, doc.rows(), sheetOfRows(doc.rows()));
        const PrintJob job = readPrintJob(paths.dataRoot);
        QString reason;
        if (!writePriceSheetPdf(job, pdf, reason)) {
            err << "qorvale-tool: " << reason << "\n";
            return 1;
        }
        out << "group " << group << " pipe type " << kan << ": " << pdf << " ("
            << sheetPages(job).size() << " pages)\n";
        return 0;
    } catch (const PrintInput& e) {
        err << "qorvale-tool: " << e.message() << "\n";
    } catch (const std::exception& e) {
        err << "qorvale-tool: " << QString::fromUtf8(e.what()) << "\n";
    }
    return 1;
}
