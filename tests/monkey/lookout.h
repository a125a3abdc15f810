#pragma once

#include <QList>
#include <QPointer>
#include <QString>

class Hands;
class Journal;
class LiveProgram;

/// Looks after what no model knows: which objects live, which windows are on screen, and where the
/// keyboard is.
class Lookout final {
 public:
    Lookout(Journal &journal, const Hands &hands) : journal_(journal), hands_(hands) {}

    /// What is on screen and what the program knows, in words.
    QString state() const;
    void check(const LiveProgram &program) const;
    /// To be called when the program has ended, with what it consisted of.
    void checkNothingIsLeft(const QList<QPointer<QObject>> &objects) const;

 private:
    void checkWindows(const LiveProgram &program) const;
    void checkFocus() const;

    Journal &journal_;
    const Hands &hands_;
};
