#pragma once

#include "ui/uctListView.h"

struct Session;

/// The projects that the user chose last; a click on one, or Enter, chooses it.
class uctProjectHistory : public uctListView {
    Q_OBJECT

public:
    explicit uctProjectHistory(QWidget* parent = nullptr);
    void fill(const Session& session);

signals:
    void projectChosen(const QString& project);

private:
    void choose(int row) { emit projectChosen(textOf(row, 0)); }
};
