#pragma once

class QWidget;

/// The words on the grounds of the pages, the legends of the columns among them. Pictures have none, since
/// words are translated: each is a label of the form, called lPicture and the key of its text
/// (lPictureSpeedAxis); one that stands there a second time ends in _2.
namespace PictureWords {

/// Sets the words of a page in the user's language.
void setTexts(QWidget *page);

/// What lies on a picture has its place and its size. Where the desktop's font is too large for that, the
/// labels and fields of one kind get as large a font as the tightest of them can hold. A ground with a layout
/// goes with the font and stays as it is; null is one, too.
void fitFonts(QWidget *ground);

} // namespace PictureWords
