#pragma once

#include <QWidget>

namespace platform {

/// A panel on which pictures are shown, in one of three tones.
class Banner final : public QWidget {
    Q_OBJECT

 public:
    enum class Tone { Neutral, Positive, Festive };

    explicit Banner(QWidget *parent = nullptr);

    void setTone(Tone tone);
    Tone tone() const { return tone_; }

 protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

 private:
    QColor imageColor() const;
    void colorImages();
    void paintRays(QPainter &painter) const;

    Tone tone_ = Tone::Neutral;
};

}  // namespace platform
