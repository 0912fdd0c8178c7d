#pragma once

#include <QWidget>

class QGridLayout;
class QLineEdit;
class QPushButton;

namespace zolmara::ui {

/// The certification of the statement, and how it is signed.
class frmESCert : public QWidget {
public:
    frmESCert();

private:
    QLineEdit* AddField(QGridLayout* grid, int row, const char* label, const char* name,
                        const QString& caption, const std::string& text);
    void EnableAccept();

    QLineEdit* txtESFirst_ = nullptr;
    QLineEdit* txtESLast_ = nullptr;
    QLineEdit* txtESTitle_ = nullptr;
    QPushButton* cmdAccept_ = nullptr;
};

}  // namespace zolmara::ui
