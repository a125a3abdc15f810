#pragma once

#include <type_traits>
#include <vector>

#include <QPointer>
#include <QString>
#include <QWidget>

namespace platform {

class OutletBase;

/// An object with outlets, which are filled when its window is loaded.
class OutletOwner {
 public:
    /// Called by each outlet when it is constructed.
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

    /// Finds the control, and logs it if it is missing.
    virtual void fill(const QWidget &window) = 0;

    void setHidden(bool hidden) const;
    void setEnabled(bool enabled) const;
    QString accessibleName() const;
    void setAccessibleName(const QString &name) const;
    void setAccessibleDescription(const QString &description) const;
    void setFocus() const;
    /// Whether Qt can have a screen reader announce a text, which takes version 6.8. With an older
    /// one the text has to belong to the control that the focus moves to.
    static constexpr bool announces = QT_VERSION >= QT_VERSION_CHECK(6, 8, 0);
    /// Has a screen reader say `text`, if Qt can announce it.
    void announce(const QString &text) const;

 protected:
    QString name() const { return QString::fromLatin1(name_); }
    void setControl(QWidget *control) { control_ = control; }
    QWidget *control() const { return control_; }
    /// Logs which control is missing and which ones there are, to help with editing the layout.
    void reportMissing(const QWidget &window, const char *type) const;

    /// Calls a method of the control, if there is one.
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
