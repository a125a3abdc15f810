#pragma once

#include <QWidget>

namespace platform {

/// The panel that a picture is shown on, in one of three tones.
class Banner final : public QWidget {
    Q_OBJECT

 public:
    enum class Tone { Neutral, Positive, Festive };

    explicit Banner(QWidget *parent = nullptr);

    void setTone(Tone tone);
    Tone tone() const { return tone_; }

    /// What pictures on the banner that `part` stands on are drawn in; elsewhere, the accent.
    static QColor inkAt(const QWidget &part);

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    void paintRays(QPainter &painter) const;

    Tone tone_ = Tone::Neutral;
};

}  // namespace platform
