#pragma once

#include <type_traits>
#include <vector>

#include <QPointer>
#include <QString>
#include <QWidget>

namespace platform {

class OutletBase;

/// Whoever has outlets, which are filled when its window is loaded.
class OutletOwner {
 public:
    /// Called by each outlet as it is made.
    void declareOutlet(OutletBase &outlet) { outlets_.push_back(&outlet); }

 protected:
    ~OutletOwner() = default;
    void fillOutlets(const QWidget &window) const;

 private:
    std::vector<OutletBase *> outlets_;
};

/// A control of a window, found by its name when the window loads. It is a weak reference: a write
/// to an absent control does nothing.
class OutletBase {
 public:
    OutletBase(OutletOwner &owner, const char *name);
    OutletBase(const OutletBase &) = delete;
    OutletBase &operator=(const OutletBase &) = delete;
    virtual ~OutletBase() = default;

    /// Finds the control; one that is missing is logged.
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
    QString name() const { return QString::fromLatin1(name_); }
    void setControl(QWidget *control) { control_ = control; }
    QWidget *control() const { return control_; }
    /// Logs what is missing and what is there, for whoever edits the layout.
    void reportMissing(const QWidget &window, const char *type) const;

    /// Calls a method of the control, where there is one.
    template <class Control, class... Parameters>
    void tell(void (Control::*method)(Parameters...),
              std::type_identity_t<Parameters>... arguments) const {
        if (auto *control = static_cast<Control *>(control_.data())) {
            (control->*method)(arguments...);
        }
    }

 private:
    const char *name_;
    QPointer<QWidget> control_;
};

/// An outlet to a control of class `Control`.
template <class Control>
class Outlet : public OutletBase {
 public:
    using OutletBase::OutletBase;

    void fill(const QWidget &window) final {
        setControl(window.findChild<Control *>(name()));
        if (get() == nullptr) {
            reportMissing(window, Control::staticMetaObject.className());
        }
    }

    /// The control, or null.
    Control *get() const { return static_cast<Control *>(control()); }
};

}  // namespace platform
