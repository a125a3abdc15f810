#pragma once

#include <QWidget>

namespace platform {

/// Rows with levels that are meant to be filled one after the other: a row whose level is full is
/// done, and of the others the first comes next. It has the focus when the window appears.
class StepList final : public QWidget {
    Q_OBJECT
    /// What the row that comes next is said to be.
    Q_PROPERTY(QString next MEMBER next_)
    /// What the rows that are done are said to be.
    Q_PROPERTY(QString done MEMBER done_)

 public:
    explicit StepList(QWidget *parent = nullptr);

 protected:
    bool event(QEvent *event) override;

 private:
    void followLevels();
    void markRows();

    QString next_;
    QString done_;
};

}  // namespace platform
