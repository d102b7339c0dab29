// The pages with a handful of labelled parameters: what each of them shows, and where.

#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/labelleddatawidget.h"
#include "pages/pagefactory.h"
#include "tests/pages/shownpage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <algorithm>

using namespace PageNumber;

namespace {

struct Member
{
    int page;
    const char *section;
    QList<int> params; ///< in order of registration
    bool hasNames;
    const char *picture;
    QSize formSize;
    QSize pictureMinimum;
    const char *description;
};

const QVector<Member> members {
    {SpeedRegulation, "DialogSpeedRegulation", {0x1E, 0x1F, 0x21, 0x3C}, false, "Regelkreise.png", {857, 693},
        {775, 525}, ""},
    {Accelerations, "DialogAcceleration", {0x1A, 0x1B, 0x1C, 0x1D}, false, "Rampen.png", {858, 712},
        {750, 575}, "Hier werden die Beschleunigungs- und Bremsrampen in beide Drehrichtungen vorgegeben."},
    {CurrentLimits, "DialogCurrentLimits", {0x36, 0x38, 0x39, 0x3A, 0x3B}, false, "Stromgrenzen.png",
        {828, 686}, {750, 550},
        "Hier können die Stromgrenzen (und somit die Drehmomentgrenzen) in den einzelnen Quadranten "
        "prametriert werden. Zusätzlich können über die Reversierschwelle noch die generatorischen "
        "Eigenschaften des Antriebs eingeschränkt werden."},
    {FixedResolutions, "DialogFixedResolutions", {0x17, 0x18, 0x19}, true, "bg.png", {1669, 1012}, {0, 0},
        "Die Festdrehzahlen können über die digitalen Eingänge I1 und I2 vorgegeben werden."},
    {Positioning, "DialogPositioning",
        {0x21, 0x3C, 0x3F, 0x40, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49}, true, "bg.png",
        {1669, 1012}, {0, 0},
        "Die Positionierung wird durch die Eingangsbeschaltung A/B = HIGH/HIGH ausgelöst."},
    {Output, "DialogOutput",
        {0x03, 0x04, 0x05, 0x23, 0x24, 0x25, 0x32, 0x33, 0x34, 0x35, 0x4F, 0x50, 0x46, 0x47, 0x48, 0x49},
        true, "bg.png", {828, 676}, {0, 0},
        "Hier können die digitalen Ausgänge des Antriebs verschiedenen Funktionen zugeordnet werden. Unter "
        "Umständen sind manche Konfigurationen nur in bestimmten Betriebsmodi sinnvoll."},
    {FixResistance, "DialogFixResistance", {0x4D, 0x4E}, true, "bg.png", {887, 740}, {0, 0},
        "Falls beim Bremsen des Antriebs Leistung zurückgespeist wird, kann der Antrieb das DC-Netz gegen "
        "Überspannung schützen. Die entsprechenden Reaktionsschwellen können hier eingestellt werden."},
    {VoltageLimits, "DialogVoltageLimits", {0x4A, 0x4B, 0x4C}, true, "bg.png", {847, 695}, {0, 0},
        "Zum Schutz des DC-Netzes können hier Spannungsgrenzen vorgegeben werden."},
    {OperationsMode, "DialogOperationsMode", {1, 2, 6}, true, "bg.png", {1669, 943}, {0, 0}, ""},
    {RS485, "DialogRS485", {0x52}, false, "bg.png", {898, 739}, {600, 200},
        "Falls mehrere Antriebe gemeinsam an einer seriellen RS485-Schnittstelle betrieben werden sollen, "
        "muss jeder Antrieb unter einer individuellen Busadresse erreichbar sein. Hier kann hier die "
        "entsprechende Busadresse verändert werden."},
};

/// The pages of the modes and of the bus address have widgets of their own kind.
bool isLabelled(const Member &member)
{
    return member.page != OperationsMode && member.page != RS485;
}

/// "Param0x1E", and what the two parameters of the regulation page are called that bear other numbers.
QString stemOf(int page, int number)
{
    if (page == SpeedRegulation && number == 0x21)
        return "Param0x20";
    if (page == SpeedRegulation && number == 0x3C)
        return "Param0x22";
    return QString("Param0x%1").arg(QString::number(number, 16).toUpper(), 2, QLatin1Char('0'));
}

void defineAll(const QList<int> &numbers)
{
    for (const int number : numbers)
        defineParameters("V123", {QString("%1;Name %1;Einheit %1;0;-9999;9999;Signed;1;rw;0;").arg(number)});
}

} // namespace

class TestParameterPages : public IsolatedTest
{
    Q_OBJECT

private slots:
    void pageOfLabelledParametersIsLookedAt();
    void pageReadsItsParametersInThisOrder_data() { everyPage(); }
    void pageReadsItsParametersInThisOrder();
    void formHasItsSizeAndPicture_data() { everyPage(); }
    void formHasItsSizeAndPicture();
    void descriptionStandsAboveParameters_data() { everyPage(); }
    void descriptionStandsAboveParameters();
    void textsAreInUsersLanguage_data() { everyPage(); }
    void textsAreInUsersLanguage();
    void hiddenTextNeverComesBack_data();
    void hiddenTextNeverComesBack();
    void textThatIsGoneAtLaterShowingHidesItsLabel();

    void valueStandsInPlaceOfItsParameter_data() { everyParameter(); }
    void valueStandsInPlaceOfItsParameter();
    void typedValueIsReportedForItsParameter_data() { everyParameter(); }
    void typedValueIsReportedForItsParameter();

    void userValueComesBackIntoItsField_data() { everyParameter(); }
    void userValueComesBackIntoItsField();
    void textOfFormCannotBeBroughtBack_data() { everyParameter(); }
    void textOfFormCannotBeBroughtBack();
    void valueOfAnotherDriveCannotBeBroughtBack_data() { everyParameter(); }
    void valueOfAnotherDriveCannotBeBroughtBack();
    void clearingEmptiesEveryField_data() { everyLabelledPage(); }
    void clearingEmptiesEveryField();

    void onlyPagesWithoutPictureNameTheirParameters_data() { everyLabelledPage(); }
    void onlyPagesWithoutPictureNameTheirParameters();
    void pageThatNoDriveWasShownOnKeepsTextsOfForm_data() { everyLabelledPage(); }
    void pageThatNoDriveWasShownOnKeepsTextsOfForm();
    void legendStandsAboveOrBesideValues_data();
    void legendStandsAboveOrBesideValues();
    void wordsOfPictureAreTranslated_data();
    void wordsOfPictureAreTranslated();
    void wordsOfPictureFitTheirPlaces_data();
    void wordsOfPictureFitTheirPlaces();
    void pictureKeepsItsShape_data() { everyPage(); }
    void pictureKeepsItsShape();
    void fieldsStayOnTheirPlaceInPicture_data();
    void fieldsStayOnTheirPlaceInPicture();
    void parameterThatDriveDoesNotReportProducesNoChange();
    void remoteControlShowsNothingAndReadsNothing();

private:
    static void everyPage();
    /// Those whose widgets bear the numbers of the parameters.
    static void everyLabelledPage();
    static void everyParameter();
    const Member &fetchMember() const;
};

void TestParameterPages::everyPage()
{
    QTest::addColumn<int>("member");
    for (int i = 0; i < members.size(); ++i)
        QTest::newRow(members.at(i).section) << i;
}

void TestParameterPages::everyLabelledPage()
{
    QTest::addColumn<int>("member");
    for (int i = 0; i < members.size(); ++i) {
        if (isLabelled(members.at(i)))
            QTest::newRow(members.at(i).section) << i;
    }
}

void TestParameterPages::everyParameter()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("number");
    for (const Member &member : members) {
        if (!isLabelled(member))
            continue;
        for (const int number : member.params)
            QTest::addRow("%s 0x%02X", member.section, number) << member.page << number;
    }
}

void TestParameterPages::pageOfLabelledParametersIsLookedAt()
{
    for (int page = 0; page < PageNumber::Count; ++page) {
        const std::unique_ptr<Z7DataWidget> created = createDataPage(page);
        const bool isLookedAt = std::any_of(
            members.begin(), members.end(), [page](const Member &member) { return member.page == page; });
        const bool isLabelled =
            qobject_cast<LabelledDataWidget *>(created.get()) && !created->paramIds().isEmpty();
        QVERIFY2(isLookedAt || !isLabelled, created->metaObject()->className());
    }
}

const Member &TestParameterPages::fetchMember() const
{
    return members.at(*static_cast<int *>(QTest::qData("member", qMetaTypeId<int>())));
}

void TestParameterPages::pageReadsItsParametersInThisOrder()
{
    const Member &member = fetchMember();
    QCOMPARE(createDataPage(member.page)->paramIds(), member.params);
}

void TestParameterPages::formHasItsSizeAndPicture()
{
    const Member &member = fetchMember();
    const ShownPage shown(member.page);
    QCOMPARE(shown.page->size(), member.formSize);
    QCOMPARE(shown.page->windowTitle(), QStringLiteral("Form"));
    QCOMPARE(shown.page->objectName(), QString(shown.page->metaObject()->className()));
    const auto *ground = shown.child<QWidget>("bg");
    QVERIFY(ground->styleSheet().contains(QString("background-image: url(:/images/%1)").arg(member.picture)));
    QCOMPARE(ground->minimumSize(), member.pictureMinimum);
}

void TestParameterPages::descriptionStandsAboveParameters()
{
    const Member &member = fetchMember();
    ShownPage shown(member.page);
    shown.showFor(driveWith({}));
    const QLabel *description = shown.label("lFormDescription");
    QCOMPARE(description->text(), QString::fromUtf8(member.description));
    QCOMPARE(description->isVisible(), !description->text().isEmpty());
    QVERIFY(description->font().bold());
    QVERIFY(description->wordWrap());
    QVERIFY(!shown.label("lIntro")->isVisible());
}

void TestParameterPages::textsAreInUsersLanguage()
{
    const Member &member = fetchMember();
    WorkingFolder::writeText("deutsch.z7lang",
        QString("[%1]\nDialogDescription=What it is\nIntroduction=How to use it\n")
            .arg(member.section)
            .toUtf8());
    ShownPage shown(member.page);
    shown.showFor(driveWith({}));
    QCOMPARE(shown.text("lFormDescription"), QStringLiteral("What it is"));
    QVERIFY(shown.label("lFormDescription")->isVisible());
    QCOMPARE(shown.text("lIntro"), QStringLiteral("How to use it"));
    QVERIFY(shown.label("lIntro")->isVisible());
}

void TestParameterPages::hiddenTextNeverComesBack_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("laterText");
    QTest::newRow("description of the loops") << int(SpeedRegulation) << "lFormDescription"
                                              << "[DialogSpeedRegulation]\nDialogDescription=Now\n";
    QTest::newRow("introduction of the ramps") << int(Accelerations) << "lIntro"
                                               << "[DialogAcceleration]\nIntroduction=Now\n";
    QTest::newRow("description of the modes") << int(OperationsMode) << "lFormDescription"
                                              << "[DialogOperationsMode]\nDialogDescription=Now\n";
    QTest::newRow("introduction of the bus address") << int(RS485) << "lIntro"
                                                     << "[DialogRS485]\nIntroduction=Now\n";
}

void TestParameterPages::hiddenTextNeverComesBack()
{
    QFETCH(int, page);
    QFETCH(QString, label);
    QFETCH(QString, laterText);
    ShownPage shown(page);
    shown.showFor(driveWith({}));
    QVERIFY(!shown.label(label)->isVisible());

    Z7Services::shutdown();
    WorkingFolder::writeText("deutsch.z7lang", laterText);
    shown.showFor(driveWith({}));
    QCOMPARE(shown.text(label), QStringLiteral("Now"));
    QVERIFY(!shown.label(label)->isVisible());
}

void TestParameterPages::textThatIsGoneAtLaterShowingHidesItsLabel()
{
    ShownPage shown(Accelerations);
    shown.showFor(driveWith({}));
    QVERIFY(shown.label("lFormDescription")->isVisible());

    Z7Services::shutdown();
    WorkingFolder::writeText("deutsch.z7lang", "[DialogAcceleration]\nDialogDescription=\n");
    shown.showFor(driveWith({}));
    QVERIFY(!shown.label("lFormDescription")->isVisible());
}

void TestParameterPages::valueStandsInPlaceOfItsParameter()
{
    QFETCH(int, page);
    QFETCH(int, number);
    ShownPage shown(page);
    defineAll(shown.page->paramIds());
    shown.showFor(driveWith({readParam(number, -321)}));

    const QString stem = stemOf(page, number);
    QCOMPARE(shown.text("l" + stem + "Device"), QStringLiteral("-321"));
    QCOMPARE(shown.text("l" + stem + "Unit"), QString("Einheit %1").arg(number));
    QVERIFY(!shown.label("l" + stem + "Device")->isEnabled());
    QVERIFY(!shown.label("l" + stem + "Unit")->isEnabled());
    QVERIFY(shown.field("ed" + stem + "User")->font().bold());
    if (const QLabel *name = shown.label("l" + stem + "ParamName"))
        QCOMPARE(name->text(), QString("Name %1").arg(number));
    int values = 0;
    for (const QLabel *label : shown.page->findChildren<QLabel *>())
        values += label->text() == "-321";
    QCOMPARE(values, number == 0x36 ? 2 : 1);
}

void TestParameterPages::typedValueIsReportedForItsParameter()
{
    QFETCH(int, page);
    QFETCH(int, number);
    ShownPage shown(page);
    defineAll(shown.page->paramIds());
    shown.showFor(driveWith({readParam(number, 5)}));
    QVERIFY(Person::type(shown.field("ed" + stemOf(page, number) + "User"), "7"));
    QCOMPARE(lastReported(shown.modified).number, number);
    QCOMPARE(lastReported(shown.modified).value, 7);
}

void TestParameterPages::userValueComesBackIntoItsField()
{
    QFETCH(int, page);
    QFETCH(int, number);
    ShownPage shown(page);
    shown.showFor(driveWith({readParam(number, 5)}));
    shown.page->applyUserParams(paramSet({readParam(number, -7)}));

    int filled = 0;
    for (const QLineEdit *field : shown.page->findChildren<QLineEdit *>())
        filled += field->text() == "-7";
    QCOMPARE(filled, number == 0x36 ? 2 : 1);
    QCOMPARE(shown.field("ed" + stemOf(page, number) + "User")->text(), QStringLiteral("-7"));
    QCOMPARE(shown.modified.count() + shown.deleted.count(), 0);
}

void TestParameterPages::textOfFormCannotBeBroughtBack()
{
    QFETCH(int, page);
    QFETCH(int, number);
    ShownPage shown(page);
    shown.showFor(driveWith({readParam(number, 5)}));
    QCOMPARE(textAfterUndo(shown.field("ed" + stemOf(page, number) + "User")), QString());
}

void TestParameterPages::valueOfAnotherDriveCannotBeBroughtBack()
{
    QFETCH(int, page);
    QFETCH(int, number);
    ShownPage shown(page);
    defineAll(shown.page->paramIds());
    shown.showFor(driveWith({readParam(number, 5)}));
    QLineEdit *field = shown.field("ed" + stemOf(page, number) + "User");
    QVERIFY(Person::type(field, "77"));
    shown.showFor(driveWith({readParam(number, 5)}));
    shown.modified.clear();
    QCOMPARE(textAfterUndo(field), QString());
    QCOMPARE(shown.modified.count() + shown.deleted.count(), 0);
}

void TestParameterPages::clearingEmptiesEveryField()
{
    const Member &member = fetchMember();
    ShownPage shown(member.page);
    QList<Z7DeviceParam> params;
    for (const int number : member.params)
        params.append(readParam(number, 5));
    shown.showFor(driveWith(params));
    shown.page->applyUserParams(paramSet(params));
    shown.page->clearUserValues();
    for (const QLineEdit *field : shown.page->findChildren<QLineEdit *>())
        QCOMPARE(field->text(), QString());
    QCOMPARE(shown.modified.count() + shown.deleted.count(), 0);
}

void TestParameterPages::onlyPagesWithoutPictureNameTheirParameters()
{
    const Member &member = fetchMember();
    const ShownPage shown(member.page);
    const auto names = shown.page->findChildren<QLabel *>(QRegularExpression("ParamName$"));
    QCOMPARE(names.size(), member.hasNames ? member.params.size() : 0);
}

void TestParameterPages::pageThatNoDriveWasShownOnKeepsTextsOfForm()
{
    const Member &member = fetchMember();
    const ShownPage shown(member.page);
    shown.page->clearUserValues();
    const auto labels = shown.page->findChildren<QLabel *>();
    // Above the parameters stand two labels; each parameter has its value and its unit at least.
    QVERIFY(labels.size() >= 2 + 2 * member.params.size());
    for (const QLabel *label : labels)
        QCOMPARE(label->text(), QStringLiteral("TextLabel"));
}

void TestParameterPages::legendStandsAboveOrBesideValues_data()
{
    QTest::addColumn<int>("page");
    for (const Member &member : members) {
        // The two rows of the address page say of themselves which is which.
        if (member.page != RS485)
            QTest::newRow(member.section) << member.page;
    }
}

void TestParameterPages::legendStandsAboveOrBesideValues()
{
    QFETCH(int, page);
    ShownPage shown(page);
    shown.showFor(driveWith({}));
    const QLabel *device = shown.label("lPictureDeviceValue");
    const QLabel *user = shown.label("lPictureUserValue");
    QCOMPARE(device->text(), QStringLiteral("Ist-Wert"));
    QCOMPARE(user->text(), QStringLiteral("Soll-Wert"));
    // Each looks like the values it stands for, in their order.
    QVERIFY(!device->isEnabled());
    QVERIFY(user->font().bold());
    QVERIFY(device->geometry().right() < user->geometry().left());
    const auto *ground = shown.child<QWidget>("bg");
    if (!ground->layout())
        return;
    for (const QLineEdit *field : ground->findChildren<QLineEdit *>()) {
        QVERIFY(user->geometry().bottom() < field->geometry().top());
        QVERIFY(field->geometry().left() <= user->geometry().right());
        QVERIFY(device->geometry().right() < field->geometry().left());
    }
}

void TestParameterPages::wordsOfPictureAreTranslated_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("german");
    QTest::newRow("loops") << int(SpeedRegulation)
                           << QStringList {"Drehzahlregler I-Verstärkung", "Drehzahlregler P-Verstärkung",
                                  "Geber", "Ist-Drehzahl n", "Ist-Position φ", "Ist-Strom i", "Ist-Wert",
                                  "Lageregler Drehzahlvorsteuerung", "Lageregler P-Verstärkung",
                                  "Leistungsteil", "Motor", "Soll-Drehzahl n*", "Soll-Wert", "Sollwertgeber",
                                  "Stromregler"};
    QTest::newRow("ramps") << int(Accelerations)
                           << QStringList {"Beschleunigungsrampe Linkslauf",
                                  "Beschleunigungsrampe Rechtslauf", "Bremsrampe Linkslauf",
                                  "Bremsrampe Rechtslauf", "Drehzahl n", "Ist-Wert", "Linkslauf",
                                  "Rechtslauf", "Soll-Wert", "Zeit t"};
    QTest::newRow("quadrants") << int(CurrentLimits)
                               << QStringList {"Drehmoment M", "Drehzahl n", "Ist-Wert", "Linkslauf",
                                      "Rechtslauf", "Reversierschwelle", "Reversierschwelle", "Soll-Wert",
                                      "Stromgrenze Linkslauf bremsend", "Stromgrenze Linkslauf treibend",
                                      "Stromgrenze Rechtslauf bremsend", "Stromgrenze Rechtslauf treibend"};
}

void TestParameterPages::wordsOfPictureAreTranslated()
{
    QFETCH(int, page);
    const auto wordsOf = [](const ShownPage &shown) {
        QStringList words;
        for (const QLabel *label : shown.page->findChildren<QLabel *>(QRegularExpression("^lPicture")))
            words.append(label->text());
        words.sort();
        return words;
    };
    ShownPage shown(page);
    shown.showFor(driveWith({}));
    QTEST(wordsOf(shown), "german");

    Z7Services::shutdown();
    WorkingFolder::write("english.z7lang", WorkingFolder::read(Z7_SOURCE_DIR "/languages/english.z7lang"));
    Z7Services::instance()->options()->setLanguage("english");
    shown.showFor(driveWith({}));
    QFETCH(QStringList, german);
    for (const QString &word : wordsOf(shown))
        QVERIFY2(word == "Motor" || !german.contains(word), qPrintable(word));
}

void TestParameterPages::wordsOfPictureFitTheirPlaces_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("points");
    for (const int page : {int(SpeedRegulation), int(Accelerations), int(CurrentLimits)}) {
        for (const int points : {9, 18})
            QTest::addRow("page %d, %d points", page, points) << page << points;
    }
}

void TestParameterPages::wordsOfPictureFitTheirPlaces()
{
    QFETCH(int, page);
    QFETCH(int, points);
    const QFont before = QApplication::font();
    ShownPage shown(page);
    shown.showFor(driveWith({}));
    QFont font = before;
    font.setPointSize(points);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
    QStringList cut;
    for (const QLabel *label : shown.page->findChildren<QLabel *>(QRegularExpression("^lPicture"))) {
        const int needed =
            label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
        if (needed > label->height() || (!label->wordWrap() && label->sizeHint().width() > label->width()))
            cut.append(label->text());
        for (const QLineEdit *field : shown.page->findChildren<QLineEdit *>())
            QVERIFY2(!field->geometry().intersects(label->geometry()) || label->text() == "Soll-Wert",
                qPrintable(label->text()));
    }
    QApplication::setFont(before);
    QCOMPARE(cut, QStringList());
}

void TestParameterPages::pictureKeepsItsShape()
{
    const Member &member = fetchMember();
    ShownPage shown(member.page);
    shown.showFor(driveWith({}));
    shown.page->resize(1920, 1080);
    QCoreApplication::processEvents();
    auto *ground = shown.child<QWidget>("bg");
    const QImage picture(QStringLiteral(":/images/") + member.picture);
    const QImage drawn = ground->grab().toImage();
    const QRect compared = picture.rect() & drawn.rect();
    int seen = 0;
    for (int y = 0; y < compared.height(); y += 11) {
        for (int x = 0; x < compared.width(); x += 7) {
            if (ground->childAt(x, y))
                continue;
            ++seen;
            QVERIFY2(QColor(drawn.pixel(x, y)) == QColor(picture.pixel(x, y)),
                qPrintable(QString("at %1, %2").arg(x).arg(y)));
        }
    }
    QVERIFY(seen > 1000);
}

void TestParameterPages::fieldsStayOnTheirPlaceInPicture_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("loops") << int(SpeedRegulation);
    QTest::newRow("ramps") << int(Accelerations);
    QTest::newRow("quadrants") << int(CurrentLimits);
}

void TestParameterPages::fieldsStayOnTheirPlaceInPicture()
{
    QFETCH(int, page);
    ShownPage shown(page);
    shown.showFor(driveWith({}));
    const auto onPicture = shown.child<QWidget>("bg")->findChildren<QWidget *>(QRegularExpression("Param0x"));
    const auto places = [&onPicture] {
        QList<QRect> rects;
        for (const QWidget *widget : onPicture)
            rects.append(widget->geometry());
        return rects;
    };
    const QList<QRect> before = places();
    QVERIFY(!before.isEmpty());
    shown.page->resize(1900, 1400);
    QCoreApplication::processEvents();
    QCOMPARE(places(), before);
}

void TestParameterPages::parameterThatDriveDoesNotReportProducesNoChange()
{
    ShownPage shown(Accelerations);
    defineAll(shown.page->paramIds());
    shown.showFor(driveWith({readParam(0x1A, 100)}));
    QVERIFY(Person::type(shown.field("edParam0x1BUser"), "7"));
    QCOMPARE(shown.modified.count(), 0);
    QCOMPARE(shown.text("lParam0x1BDevice"), QStringLiteral("TextLabel"));
}

void TestParameterPages::remoteControlShowsNothingAndReadsNothing()
{
    ShownPage shown(RemoteControl);
    QCOMPARE(shown.page->size(), QSize(400, 300));
    shown.showFor(driveWith({readParam(1, 1)}));
    shown.page->newUserParam(readParam(1, 2));
    QCOMPARE(shown.page->paramIds(), QList<int>());
    QVERIFY(shown.page->findChildren<QWidget *>().isEmpty());
}

QTEST_MAIN(TestParameterPages)

#include "tst_parameterpages.moc"
