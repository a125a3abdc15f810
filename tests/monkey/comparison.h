#pragma once

#include "monkey/model.h"

namespace platform {
class MessageBox;
}
class Seam;

/// The program beside its model.
namespace comparison {

/// Each layout's window as nobody has written to it yet.
model::Program::Layouts layouts();

/// Where the program differs from its model, in words; `alert` is the one on screen.
QStringList differences(Seam &seam, const QStringList &errors,
                        const platform::MessageBox *alert = nullptr);

}  // namespace comparison
