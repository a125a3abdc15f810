#pragma once

#include <QWidget>

namespace platform {

/// A row of segments, the first of which are filled. For a screen reader it has a name made of
/// its caption and its value in words, such as "Variables, 2 of 3 passes".
class LevelIndicator final : public QWidget {
    Q_OBJECT
    /// How many segments there are.
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum)
    /// What is measured, for the name.
    Q_PROPERTY(QString caption MEMBER caption_ WRITE setCaption)
    /// What is counted, for the name.
    Q_PROPERTY(QString counted MEMBER counted_ WRITE setCounted)

 public:
    explicit LevelIndicator(QWidget *parent = nullptr);

    void setCaption(const QString &caption);
    void setCounted(const QString &counted);

    int maximum() const { return maximum_; }
    void setMaximum(int maximum);

    double doubleValue() const { return value_; }
    void setDoubleValue(double value);

    /// The value as it is read out, such as "2 of 3 passes".
    QString valueInWords() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 Q_SIGNALS:
    void valueInWordsChanged(const QString &words);

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    void describe();

    QString caption_;
    QString counted_;
    int maximum_ = 0;
    double value_ = 0;
};

}  // namespace platform
