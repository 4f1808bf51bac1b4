#pragma once
// The page layout of the print program: landscape A4 sheets of composite
// unit prices, drawn with QPainter in tenths of a millimetre, the same for
// the PDF writer, the printer and the preview.
//
// Nothing printed is cut. Every column is as wide as the widest text it
// shows; when the columns are too wide for the sheet the table is set in a
// smaller face, and when that is not enough its columns are split over two
// pages (the size and the unit on both). The heading lines are measured the
// same way, and shrink or wrap rather than run into each other.

#include "print/printjob.h"

#include <QString>
#include <QVector>

class QPagedPaintDevice;

// One printed page: the blocks on it and which part of the table's
// columns it shows (0, or 1 on the second page of a split table).
struct SheetPage {
    int part = 0;
    QVector<int> blocks; // indexes into job.blocks
};

// The pages of the job, in print order.
QVector<SheetPage> sheetPages(const PrintJob& job);

// Draws every page onto a paged device (a PDF writer or a printer) already
// set to landscape A4. False with a reason when the device can't be painted.
bool paintPriceSheets(QPagedPaintDevice& device, const PrintJob& job, QString& reason);

// Writes the sheets as a PDF file. False with a Japanese reason on failure.
bool writePriceSheetPdf(const PrintJob& job, const QString& path, QString& reason);

// The text a cell of the table shows for a field key of the style: the
// field as written, but for element 6, which stays empty in refrigerant
// mode as on the sheet, and the pipefitter's factor (DATA5), which has
// three decimals at least as on the sheet and keeps a fourth.
QString printedCellText(const PrintJob& job, const PrintFields& fields, const QString& key);

// The face of the printed text.
QString printFontFamily();
