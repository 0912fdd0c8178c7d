#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "forms/EditInfo.h"

class QLineEdit;
class QPushButton;

namespace zolmara::ui {

/// Changes whose statement the open CRF is, or saves a copy under another identity.
class frmCRFEditInfo : public QWidget {
public:
    /// `after` runs once the dialog has gone; with False where it was cancelled.
    explicit frmCRFEditInfo(std::function<void(bool saved)> after);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeFields();
    IdentityFields Fields() const;
    void ShowFields(const IdentityFields& fields);
    QLineEdit* FieldOf(IdentityField field) const;
    void Save(IdentityResult (*save)(IdentityFields& fields));
    void CheckLeft(QObject* field);

    std::array<QLineEdit*, 4> fields_{};
    QPushButton* cmdCancel_ = nullptr;
    std::function<void(bool)> after_;
    bool saved_ = false;
    bool checking_ = false;
};

/// Shows the dialog over frmEditS1p1. A saved identity rebuilds the windows from scratch: all but
/// the main one go.
void ShowCRFEditInfo();

}  // namespace zolmara::ui
