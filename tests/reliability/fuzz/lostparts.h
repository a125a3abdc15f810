#pragma once

#include <QByteArray>
#include <QStringList>

/// What an edit of those keys in the section General has lost of the file, or put into it besides
/// them, as the eye sees it. Empty if that is nothing.
QByteArray lost(const QByteArray &before, const QByteArray &after, const QStringList &keys);
