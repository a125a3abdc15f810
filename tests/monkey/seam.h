#pragma once

#include <memory>

#include <QMap>
#include <QObject>
#include <QPointer>

#include "monkey/model.h"

class QWidget;

/// Tells the model of whatever reaches the program, just before the program learns of it.
class Seam final : public QObject {
    Q_OBJECT

 public:
    /// Starts anew, with a model of its own, for another session.
    void begin(std::unique_ptr<model::Program> model);
    model::Program &model() { return *model_; }

    /// Which windows the learner may be closing just now; no other window may be asked to close.
    enum class Closing { Nothing, Auxiliary, Anything };
    void expect(Closing closing) { closing_ = closing; }

    /// The window of that name in the model, or null.
    QWidget *window(const QString &name) const { return windows_.value(name); }
    /// The name in the model of a window that was loaded in this session.
    QString nameOf(QWidget &window);

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    void watch(QObject &control);
    void windowCloses(QWidget &window);

    std::unique_ptr<model::Program> model_;
    QMap<QString, QPointer<QWidget>> windows_;
    QMap<QString, int> loaded_;
    Closing closing_ = Closing::Nothing;
};
