#pragma once

#include <QWidget>

namespace platform {

/// The round icon that shows the state of an ActionRow. States are told apart by shape: a tick, a
/// cross, or the label, such as the row's number, in a ring or on a disc.
class StatusIcon final : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString label MEMBER label_)

 public:
    explicit StatusIcon(QWidget *parent = nullptr);

    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    QString label_;
};

}  // namespace platform
