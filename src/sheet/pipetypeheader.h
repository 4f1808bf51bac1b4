#pragma once
// The row over the sheet: the names of the pipe type (管種名: material, use,
// joint, unit, with the toggle of the factor columns and the buttons of the
// size presets and the labour library), the building and page of the
// material prices, the print style, and the button 登　録.

#include <QWidget>

class EditCombo;
class QAction;
class QLineEdit;
class QPushButton;
class RadioGroup;
class RowTable;
class ToggleSwitch;

class PipeTypeHeader : public QWidget {
    Q_OBJECT
public:
    explicit PipeTypeHeader(QWidget* parent = nullptr);

    // The names of the pipe type from its rows, and back to them.
    void showNames(RowTable& rows);
    void applyNames(RowTable& rows) const;
    // The material name, as the questions about the pipe type name it.
    QString goods() const;
    void clearGoods();
    // The two buttons follow these actions and run them.
    void bindButtons(QAction* sizeSet, QAction* labourLibrary);

    EditCombo* goodsBox() const { return m_goodsBox; } // 管材
    EditCombo* useBox() const { return m_useBox; }     // 用途
    EditCombo* jointBox() const { return m_jointBox; } // 接合
    EditCombo* unitBox() const { return m_unitBox; }   // 単位
    ToggleSwitch* resultsSwitch() const { return m_resultsSwitch; }
    QPushButton* sizeSetButton() const { return m_sizeSetButton; }
    QPushButton* labourLibraryButton() const { return m_labourLibraryButton; }
    QLineEdit* buildingEdit() const { return m_buildingEdit; }
    QLineEdit* pageEdit() const { return m_pageEdit; }
    RadioGroup* printStyleRadio() const { return m_printStyleRadio; }
    QPushButton* saveButton() const { return m_saveButton; }

signals:
    // Enter in one of the four name boxes.
    void nameEntered();

private:
    EditCombo* m_goodsBox = nullptr;
    EditCombo* m_useBox = nullptr;
    EditCombo* m_jointBox = nullptr;
    EditCombo* m_unitBox = nullptr;
    ToggleSwitch* m_resultsSwitch = nullptr;
    QPushButton* m_sizeSetButton = nullptr;
    QPushButton* m_labourLibraryButton = nullptr;
    QLineEdit* m_buildingEdit = nullptr;
    QLineEdit* m_pageEdit = nullptr;
    RadioGroup* m_printStyleRadio = nullptr;
    QPushButton* m_saveButton = nullptr;
};
