#pragma once

#include <QWidget>

namespace platform {

/// Rows with levels that are meant to be filled one after the other. A row whose level is full is
/// done, and the first of the others is next; it has the focus when the window appears.
class StepList final : public QWidget {
    Q_OBJECT
    /// The words for the row that is next.
    Q_PROPERTY(QString next MEMBER next_)
    /// The words for the rows that are done.
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
