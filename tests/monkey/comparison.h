#pragma once

#include "monkey/model.h"

class QMessageBox;
class Seam;

/// The program beside its model.
namespace comparison {

/// Each layout's window as nobody has written to it yet.
model::Program::Layouts layouts();

/// Where the program differs from its model, in words.
QStringList differences(Seam &seam, const QStringList &errors);
/// Where an alert on screen differs from the one that the model expects.
QStringList differences(Seam &seam, const QMessageBox &box);

}  // namespace comparison
