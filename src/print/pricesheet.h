#pragma once
// The page layout of the print program: landscape A4 sheets of composite
// unit prices, drawn with QPainter in tenths of a millimetre, the same for
// the PDF writer, the printer and the preview.

#include "print/printjob.h"

#include <QPainter>
#include <QRectF>
#include <QString>
#include <QVector>

class QPagedPaintDevice;

// Which blocks stand on each page: indexes into job.blocks.
QVector<QVector<int>> PageBlocks(const PrintJob& job);

// Draws page `page` (from 0) into the painter, whose drawing area of
// pageWidthMm x pageHeightMm millimetres starts at its origin and has
// dotsPerMm device units to the millimetre.
void PaintPriceSheet(QPainter& painter, double dotsPerMm, const PrintJob& job, int page,
                     int pageCount, const QVector<int>& blocks);

// Draws every page onto a paged device (a PDF writer or a printer) already
// set to landscape A4. False with a reason when the device can't be painted.
bool PaintPriceSheets(QPagedPaintDevice& device, const PrintJob& job, QString& reason);

// Writes the sheets as a PDF file. False with a Japanese reason on failure.
bool WritePriceSheetPdf(const PrintJob& job, const QString& path, QString& reason);

// The face of the printed text.
QString PrintFontFamily();
