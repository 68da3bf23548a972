#include "ui/ScreenDialog.h"

ScreenDialog::ScreenDialog(ScreenContext& context, QWidget* parent) : QDialog(parent), m_context(context) {
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
}

void ScreenDialog::reject() {
    if (mayClose()) callBackAndClose();
}

void ScreenDialog::callBackAndClose() {
    QDialog::accept();
    m_callback.invoke();
}
