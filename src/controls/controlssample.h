#pragma once
// A small window that shows the controls together: a styled grid with
// per-cell colours, a divided cell, an overstruck cell, a hatched cell and
// the current cell's focus frame; number boxes under painted labels; and
// two gradient panels. Used by the controls-sample program and its test.

#include <QImage>
#include <QString>

class QWidget;
class PriceGrid;

// Builds the sample window (not shown).
QWidget* createControlsSample(QWidget* parent = nullptr);
// The sample's grid, found by its object name.
PriceGrid* sampleGrid(QWidget* sample);
// Shows the sample, gives its grid the focus and grabs it.
QImage grabControlsSample(QWidget* sample);
