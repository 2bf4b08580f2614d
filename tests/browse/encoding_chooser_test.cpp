#include "browse/EncodingList.h"
#include "browse/KXEncodePopButton.h"

#include <QTest>

#include <algorithm>

using namespace vantoro;

namespace {

constexpr CharsetId kShiftJis = 20;

XADString japaneseName()
{
    return XADString::stringWithBytes("\x83\x74\x83\x40\x83\x43\x83\x8b.txt", kShiftJis, 0.6F); // ファイル.txt
}

bool offers(const QList<EncodingMatch>& matches, CharsetId encoding)
{
    return std::any_of(matches.begin(), matches.end(),
                       [encoding](const EncodingMatch& match) { return match.record.encoding == encoding; });
}

qsizetype placeOf(const QList<EncodingRecord>& records, const QString& name)
{
    for (qsizetype i = 0; i < records.size(); ++i) {
        if (records[i].name == name)
            return i;
    }
    return -1;
}

}

class EncodingChooserTest : public QObject {
    Q_OBJECT

private slots:
    void sortsByNameWithNumbersAsNumbers()
    {
        const auto records = encodingRecords();
        QVERIFY(records.size() >= 40);
        const auto latin1 = placeOf(records, "Western (ISO Latin 1)");
        const auto latin9 = placeOf(records, "Western (ISO Latin 9)");
        const auto dos850 = placeOf(records, "Western (DOS 850)");
        const auto windows1252 = placeOf(records, "Western (Windows 1252)");
        QVERIFY(latin1 >= 0 && latin1 < latin9);
        QVERIFY(dos850 >= 0 && dos850 < windows1252);
        QVERIFY(placeOf(records, "Cyrillic (DOS 866)") < placeOf(records, "Cyrillic (Windows 1251)"));
        for (const auto& record : records)
            QVERIFY(record.encoding != kCharsetUtf16 && record.encoding != kCharsetUnknown);
    }

    void aSampleIsJudgedBySurrogates_data()
    {
        QTest::addColumn<QString>("sample");
        QTest::addColumn<bool>("accepted");
        const QChar high(0xD83D);
        const QChar low(0xDE00);
        QTest::newRow("empty") << QString("") << true;
        QTest::newRow("plain") << QString("abc\u00e9") << true;
        QTest::newRow("emoji") << QString("a") + high + low << false;
        QTest::newRow("lone high") << QString("a") + high << false;
        QTest::newRow("lone low at the end") << QString("a") + low << false;
        QTest::newRow("low before a letter") << QString(low) + "a" << false;
        QTest::newRow("reversed pair") << QString(low) + high + "a" << true;
    }
    void aSampleIsJudgedBySurrogates()
    {
        QFETCH(QString, sample);
        QFETCH(bool, accepted);
        QCOMPARE(acceptsSample(sample), accepted);
    }

    void offersOnlyEncodingsThatCanReadTheName()
    {
        const auto matches = encodingsMatching(japaneseName());
        QVERIFY(offers(matches, kShiftJis));
        QVERIFY(!offers(matches, kCharsetUtf8));
        QVERIFY(matches.size() < encodingRecords().size());
        const auto emoji = encodingsMatching(XADString::stringWithBytes("\xF0\x9F\x98\x80.txt", kCharsetUtf8, 1));
        QVERIFY(!offers(emoji, kCharsetUtf8));
    }

    void theMenuShowsWhatEachEncodingMakesOfTheName()
    {
        KXEncodePopButton button;
        button.buildEncodingListMatchingXADString(japaneseName());
        const int index = button.indexOfItemWithTag(kShiftJis);
        QVERIFY(index >= 0);
        QCOMPARE(button.itemText(index),
                 QString::fromUtf8("Japanese (Shift JIS)\t\u27a4 \u30d5\u30a1\u30a4\u30eb.txt"));
        button.buildEncodingList();
        QCOMPARE(button.count(), static_cast<int>(encodingRecords().size()));
        QCOMPARE(button.itemText(button.indexOfItemWithTag(kShiftJis)), QString("Japanese (Shift JIS)"));
    }

    void theExtraItemsStandWhereTheyBelong()
    {
        const int plain = static_cast<int>(encodingRecords().size());
        KXEncodePopButton button;
        button.buildEncodingListWithAutoDetect();
        QCOMPARE(button.count(), plain + 2);
        QCOMPARE(button.itemText(0), QString("AUTO Dectect"));
        QCOMPARE(button.tagAtIndex(0), kCharsetUnknown);
        QVERIFY(button.isSeparator(button.count() - 1));
        QVERIFY(!button.isSeparator(1));

        button.buildEncodingListWithDefaultEncoding();
        QCOMPARE(button.count(), plain + 2);
        QCOMPARE(button.itemText(0), QString("Default encoding"));
        QVERIFY(button.isSeparator(1));
        QVERIFY(!button.isSeparator(button.count() - 1));
        QCOMPARE(button.indexOfItemWithTag(kCharsetUnknown), 0);
    }

    void selectsByTagAndKeepsTheChoiceWhenThereIsNone()
    {
        KXEncodePopButton button;
        button.buildEncodingListWithAutoDetect();
        QVERIFY(button.selectItemWithTag(kCharsetLatin1));
        QCOMPARE(button.selectedTag(), kCharsetLatin1);
        QVERIFY(!button.selectItemWithTag(9999));
        QCOMPARE(button.selectedTag(), kCharsetLatin1);
        button.selectItemAtIndex(button.count() - 1);
        QCOMPARE(button.selectedTag(), kCharsetUnknown);
        button.show();
        QVERIFY(!button.grab().isNull());
    }
};

QTEST_MAIN(EncodingChooserTest)
#include "encoding_chooser_test.moc"
