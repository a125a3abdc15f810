#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QIcon>
#include <QPointer>
#include <QRadioButton>
#include <QString>

#include "platform/buttonrow.h"
#include "platform/imagelabel.h"
#include "platform/levelindicator.h"
#include "platform/stage.h"
#include "platform/textlabel.h"
#include "platform/windowcontroller.h"

namespace platform {

/// A control of a controller's window, found by its name when the window loads. It is a weak
/// reference: a write to an absent control does nothing.
class OutletBase {
 public:
    OutletBase(WindowController &controller, const char *name);
    OutletBase(const OutletBase &) = delete;
    OutletBase &operator=(const OutletBase &) = delete;
    virtual ~OutletBase() = default;

    virtual void fill(const QWidget &window) = 0;

    void setHidden(bool hidden) const;
    void setEnabled(bool enabled) const;
    QString accessibleName() const;
    void setAccessibleName(const QString &name) const;
    void setAccessibleDescription(const QString &description) const;
    void setFocus() const;
    /// Whether Qt can announce a text to a screen reader, as it does from 6.8 on. Before that the
    /// text has to belong to what the focus moves to.
    static constexpr bool announces = QT_VERSION >= QT_VERSION_CHECK(6, 8, 0);
    /// Has a screen reader say `text`, where that can be done.
    void announce(const QString &text) const;

 protected:
    virtual QWidget *control() const = 0;
    QString name() const { return QString::fromLatin1(name_); }
    /// One line for whoever edits the layout: what is missing, and what is there.
    void reportMissing(const QWidget &window, const char *type) const;

 private:
    const char *name_;
};

/// An outlet to a control of class `Control`.
template <class Control>
class Outlet : public OutletBase {
 public:
    using OutletBase::OutletBase;

    void fill(const QWidget &window) final {
        control_ = window.findChild<Control *>(name());
        if (!control_) {
            reportMissing(window, Control::staticMetaObject.className());
        }
    }

    Control *get() const { return control_; }

 protected:
    QWidget *control() const final { return control_; }

 private:
    QPointer<Control> control_;
};

class TextField final : public Outlet<TextLabel> {
 public:
    using Outlet::Outlet;
    /// The text shown; empty where there is no control.
    QString stringValue() const;
    void setStringValue(const QString &text) const;
    void setTextColor(const QColor &color) const;
    /// 1.0 is opaque, 0.0 invisible.
    void setAlphaValue(double alpha) const;
};

class Button final : public Outlet<QAbstractButton> {
 public:
    using Outlet::Outlet;
    /// The key that presses the button while it is visible and enabled; "\r" is Return, and the
    /// keypad's Enter with it.
    void setKeyEquivalent(const QString &key) const;
};

class ButtonCell final : public Outlet<QRadioButton> {
 public:
    using Outlet::Outlet;
    /// 1 is on, 0 is off.
    void setState(int state) const;
};

class LevelOutlet final : public Outlet<LevelIndicator> {
 public:
    using Outlet::Outlet;
    void setDoubleValue(double value) const;
    void setMaxValue(double maximum) const;
};

class ImageView final : public Outlet<ImageLabel> {
 public:
    using Outlet::Outlet;
    /// A null image empties the view.
    void setImage(const QIcon &image) const;
};

class Row final : public Outlet<ButtonRow> {
 public:
    using Outlet::Outlet;
    void setStanding(Standing standing) const;
};

class StageOutlet final : public Outlet<Stage> {
 public:
    using Outlet::Outlet;
    void setMood(Stage::Mood mood) const;
};

/// The program's image of that file name, or a null one where there is none.
QIcon imageNamed(const QString &fileName);

}  // namespace platform
