#pragma once

#include <QWidget>

namespace platform {

/// The panel that a picture is shown on, in one of three moods.
class Stage final : public QWidget {
    Q_OBJECT

 public:
    enum class Mood { Quiet, Glad, Festive };

    explicit Stage(QWidget *parent = nullptr);

    void setMood(Mood mood);
    Mood mood() const { return mood_; }

    /// What pictures on the stage that `part` stands on are drawn in; elsewhere, the accent.
    static QColor inkAt(const QWidget &part);

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    void paintRays(QPainter &painter) const;

    Mood mood_ = Mood::Quiet;
};

}  // namespace platform
