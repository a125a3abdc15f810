#pragma once

#include <QProgressBar>

namespace platform {

/// A row of segments, the first of which are filled. For a screen reader it has a name made of
/// its caption and its value in words, such as "Variables, 2 of 3 passes".
class LevelIndicator final : public QProgressBar {
    Q_OBJECT
    /// What is measured, for the name.
    Q_PROPERTY(QString caption MEMBER caption_ WRITE setCaption)
    /// What is counted, for the name.
    Q_PROPERTY(QString counted MEMBER counted_ WRITE setCounted)

 public:
    explicit LevelIndicator(QWidget *parent = nullptr);

    void setCaption(const QString &caption);
    void setCounted(const QString &counted);

    double doubleValue() const { return value_; }
    void setDoubleValue(double value);
    double maxValue() const { return maximum(); }
    void setMaxValue(double maximum);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    void describe();

    QString caption_;
    QString counted_;
    double value_ = 0;
};

}  // namespace platform
