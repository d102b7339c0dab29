#pragma once

#include <QStringList>
#include <QWidget>

/// What a person can read of a window: nothing is cut, and every text stands out from its ground. Main thread
/// only.
namespace Readable {

/// What is cut below `window`: the name of each widget whose text does not fit, with the text. What can be
/// scrolled to is whole.
QStringList cutTexts(const QWidget &window);

/// What stands out too little from its ground: each text below 4.5 to 1, or below 3 to 1 where it is bold and
/// has 14 points at least. The grounds are measured in a picture of the window.
QStringList faintTexts(const QWidget &window);

/// The contrast of two colours, from 1 to 21.
double contrast(const QColor &one, const QColor &other);

} // namespace Readable
