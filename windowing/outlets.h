#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QIcon>
#include <QRadioButton>
#include <QString>

#include "controls/actionrow.h"
#include "controls/banner.h"
#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "windowing/outlet.h"

namespace platform {

class TextOutlet final : public Outlet<TextLabel> {
 public:
    using Outlet::Outlet;
    /// The text shown; empty if there is no control.
    QString stringValue() const;
    void setStringValue(const QString &text) const;
    void setTextColor(const QColor &color) const;
    /// 1.0 is opaque, 0.0 invisible.
    void setAlphaValue(double alpha) const;
};

class ButtonOutlet final : public Outlet<QAbstractButton> {
 public:
    using Outlet::Outlet;
    /// The key that presses the button while it is visible and enabled; "\r" stands for both Return
    /// and the keypad's Enter.
    void setKeyEquivalent(const QString &key) const;
};

class RadioOutlet final : public Outlet<QRadioButton> {
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

class ImageOutlet final : public Outlet<ImageLabel> {
 public:
    using Outlet::Outlet;
    /// A null image empties the control.
    void setImage(const QIcon &image) const;
};

class RowOutlet final : public Outlet<ActionRow> {
 public:
    using Outlet::Outlet;
    void setState(RowState state) const;
};

class BannerOutlet final : public Outlet<Banner> {
 public:
    using Outlet::Outlet;
    void setTone(Banner::Tone tone) const;
};

}  // namespace platform
