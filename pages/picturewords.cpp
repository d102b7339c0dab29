#include "pages/picturewords.h"

#include "control/services/language.h"
#include "pages/pagestyle.h"

#include <QLabel>
#include <QLayout>
#include <QLineEdit>

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

struct Word
{
    const char *key;
    const char *text; ///< the German one
};

constexpr Word words[] = {
    {"DeviceValue", "Ist-Wert"},
    {"UserValue", "Soll-Wert"},

    {"SpeedAxis", "Drehzahl n"},
    {"TimeAxis", "Zeit t"},
    {"TorqueAxis", "Drehmoment M"},
    {"Clockwise", "Rechtslauf"},
    {"Anticlockwise", "Linkslauf"},

    {"AccelerationClockwise", "Beschleunigungsrampe Rechtslauf"},
    {"BrakingClockwise", "Bremsrampe Rechtslauf"},
    {"AccelerationAnticlockwise", "Beschleunigungsrampe Linkslauf"},
    {"BrakingAnticlockwise", "Bremsrampe Linkslauf"},

    {"Reference", "Sollwertgeber"},
    {"CurrentController", "Stromregler"},
    {"PowerStage", "Leistungsteil"},
    {"Motor", "Motor"},
    {"Encoder", "Geber"},
    {"SpeedReference", "Soll-Drehzahl n*"},
    {"ActualCurrent", "Ist-Strom i"},
    {"ActualSpeed", "Ist-Drehzahl n"},
    {"ActualPosition", "Ist-Position φ"},
    {"SpeedFeedForward", "Lageregler Drehzahlvorsteuerung"},
    {"PositionGain", "Lageregler P-Verstärkung"},
    {"SpeedGain", "Drehzahlregler P-Verstärkung"},
    {"SpeedIntegralGain", "Drehzahlregler I-Verstärkung"},

    {"LimitDrivingClockwise", "Stromgrenze Rechtslauf treibend"},
    {"LimitBrakingClockwise", "Stromgrenze Rechtslauf bremsend"},
    {"LimitDrivingAnticlockwise", "Stromgrenze Linkslauf treibend"},
    {"LimitBrakingAnticlockwise", "Stromgrenze Linkslauf bremsend"},
    {"ReversingThreshold", "Reversierschwelle"},
};

const QLatin1String prefix("lPicture");
const QLatin1String secondSuffix("_2");

bool isWord(const QLabel *label)
{
    return label->objectName().startsWith(prefix);
}

QString keyOf(const QLabel *label)
{
    QString key = label->objectName().mid(prefix.size());
    if (key.endsWith(secondSuffix))
        key.chop(secondSuffix.size());
    return key;
}

/// What a place on a picture has to hold at least: a drive's value or a typed one of the greatest length.
const QString longestNumber = QStringLiteral("-32768");

/// Letters may lean over the end of a line.
constexpr QSize labelMargins(4, 0);

/// The frame of a field and the gap between it and the number in it.
constexpr QSize fieldMargins(12, 6);

/// Widgets of one kind, which look alike: all have the font that the tightest of them needs.
template<typename Widget>
void fitAlike(
    const QVector<Widget *> &widgets, const std::function<QFont(const Widget &, const QFont &)> &fitting)
{
    if (widgets.isEmpty())
        return;
    QFont font = widgets.first()->font().bold() ? PageStyle::boldFont() : QFont();
    for (const Widget *widget : widgets)
        font = fitting(*widget, font);
    for (Widget *widget : widgets)
        widget->setFont(font);
}

QFont fontOfLabel(const QLabel &label, const QFont &wanted)
{
    const int flags = label.wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine;
    const QSize place = label.size() - labelMargins;
    const QFont font = PageStyle::fittingFont(label, wanted, place, label.text(), flags);
    return isWord(&label) ? font : PageStyle::fittingFont(label, font, place, longestNumber);
}

QFont fontOfField(const QLineEdit &field, const QFont &wanted)
{
    return PageStyle::fittingFont(field, wanted, field.size() - fieldMargins, longestNumber);
}

} // namespace

void PictureWords::setTexts(QWidget *page)
{
    const QList<QLabel *> labels = page->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (!isWord(label))
            continue;
        const QString key = keyOf(label);
        const auto *word = std::find_if(std::begin(words), std::end(words),
            [&key](const Word &candidate) { return key == QLatin1String(candidate.key); });
        Q_ASSERT_X(word != std::end(words), "PictureWords", qPrintable(key));
        label->setText(pictureText(word->key, word->text));
    }
}

void PictureWords::fitFonts(QWidget *ground)
{
    if (!ground || ground->layout())
        return;
    QVector<QLabel *> names;
    QVector<QLabel *> words;
    QVector<QLabel *> values;
    const QList<QLabel *> labels = ground->findChildren<QLabel *>();
    for (QLabel *label : labels)
        (!isWord(label) ? values : label->font().bold() ? names : words).append(label);
    for (const QVector<QLabel *> &alike : {names, words, values})
        fitAlike<QLabel>(alike, fontOfLabel);
    fitAlike<QLineEdit>(ground->findChildren<QLineEdit *>().toVector(), fontOfField);
}
