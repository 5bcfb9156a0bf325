// SPDX-License-Identifier: GPL-3.0-or-later
// What every combo box of every form must offer and do, written down by hand form by form; the code under
// test has no part in it. Constant data; any thread.
#pragma once

#include <QString>
#include <QVector>

enum class Files { Both, Chinese, English };

struct BitFieldExpectation
{
    const char *firstCode; // a run of parameters shares its form
    const char *lastCode;
    Files files;      // whose rows have the detail lines of this field
    const char *name; // object name of the combo box
    int title;        // detail line that is the title of the box around it; -1: none
    int firstOption;  // detail line of the first option; -1: the digits from 0 on
    int optionCount;
    int index;         // choice that is made
    const char *after; // value text after it; before it "0x9999" in a digit form, "95" in a choice form
};

inline QVector<BitFieldExpectation> digitExpectations()
{
    constexpr Files both = Files::Both;
    constexpr Files zh = Files::Chinese;
    constexpr Files en = Files::English;
    return {
        {"Pn-003", "Pn-003", both, "Pn-003uint", -1, -1, 10, 7, "0x9997"},
        {"Pn-003", "Pn-003", both, "Pn-003ten", -1, -1, 10, 3, "0x9939"},
        {"Pn-003", "Pn-003", both, "Pn-003hundreds", 2, 3, 2, 1, "0x9199"},
        {"Pn-003", "Pn-003", both, "Pn-003Thousands", -1, 5, 1, 0, "0x9999"},
        {"Pn-004", "Pn-004", both, "Pn-004uint", 0, 1, 2, 1, "0x9991"},
        {"Pn-004", "Pn-004", both, "Pn-004ten", 3, 4, 2, 1, "0x9919"},
        {"Pn-004", "Pn-004", both, "Pn-004hundreds", 6, 7, 2, 1, "0x9199"},
        {"Pn-004", "Pn-004", both, "Pn-004Thousands", 9, 10, 2, 1, "0x1999"},
        {"Pn-200", "Pn-200", both, "Pn-200", 0, 1, 10, 7, "0x9997"},
        {"Pn-201", "Pn-201", both, "Pn-201", 0, 1, 10, 1, "0x9991"},
        {"Pn-202", "Pn-202", both, "Pn-202", 0, 1, 10, 8, "0x9998"},
        {"Pn-203", "Pn-203", both, "Pn-203", 0, 1, 10, 4, "0x9994"},
        {"Pn-204", "Pn-204", both, "Pn-204", 0, 1, 3, 2, "0x9992"},
        {"Pn-205", "Pn-205", both, "Pn-205", 0, 1, 3, 1, "0x9991"},
        {"Pn-211", "Pn-226", both, "Pn-211-Pn-226_2", 3, 4, 2, 1, "0x9199"},
        {"Pn-211", "Pn-226", both, "Pn-211-Pn-226_3", 6, 7, 16, 15, "0xF999"},
        {"Pn-231", "Pn-246", both, "Pn-231-Pn-246_2", 3, 4, 2, 1, "0x9199"},
        {"Pn-231", "Pn-246", both, "Pn-231-Pn-246_3", 6, 7, 16, 10, "0xA999"},
        {"Pn-250", "Pn-250", both, "Pn-250_0", 0, 1, 5, 4, "0x9994"},
        {"Pn-250", "Pn-250", both, "Pn-250_1", 6, 7, 5, 3, "0x99993"},
        {"Pn-260", "Pn-270", zh, "Pn-260-Pn-270_01", 0, 1, 30, 29, "0x9929"},
        {"Pn-260", "Pn-270", zh, "Pn-260-Pn-270_2", 31, 32, 2, 1, "0x9199"},
        {"Pn-260", "Pn-270", zh, "Pn-260-Pn-270_3", 34, 35, 4, 3, "0x3999"},
        {"Pn-271", "Pn-286", zh, "Pn-271-Pn-286_01", 0, 1, 38, 37, "0x9937"},
        {"Pn-271", "Pn-286", zh, "Pn-271-Pn-286_23", 39, 40, 38, 7, "0x0799"},
        {"Pn-287", "Pn-290", zh, "Pn-287-Pn-290_01", 0, 1, 38, 8, "0x9908"},
        {"Pn-291", "Pn-294", zh, "Pn-291-Pn-294_0", 0, 1, 10, 4, "0x9994"},
        {"Pn-291", "Pn-294", zh, "Pn-291-Pn-294_1", 11, 12, 4, 3, "0x9939"},
        {"Pn-291", "Pn-294", zh, "Pn-291-Pn-294_2", 16, 17, 5, 4, "0x9499"},
        {"Pn-291", "Pn-294", zh, "Pn-291-Pn-294_3", 22, 23, 10, 8, "0x8999"},
        {"Pn-295", "Pn-296", zh, "Pn-295-Pn-296_01", 0, 1, 38, 12, "0x9912"},
        {"Pn-295", "Pn-296", zh, "Pn-295-Pn-296_2", 39, 40, 4, 3, "0x9399"},
        {"Pn-295", "Pn-296", zh, "Pn-295-Pn-296_3", 44, 45, 3, 2, "0x2999"},
        {"Pn-300", "Pn-300", zh, "Pn-300_0", 0, 1, 3, 2, "0x9992"},
        {"Pn-300", "Pn-300", zh, "Pn-300_1", 4, 5, 3, 2, "0x9929"},
        {"Pn-300", "Pn-300", zh, "Pn-300_2", 8, 9, 2, 1, "0x9199"},
        {"Pn-300", "Pn-300", zh, "Pn-300_3", 11, 12, 5, 4, "0x4999"},
        // The English row repeats the lines of Pn-100.
        {"Pn-300", "Pn-300", en, "Pn-300_0", 0, 1, 9, 8, "0x9998"},
        // It has no others for the further digits, which go up to those of the maximum 0x4122.
        {"Pn-300", "Pn-300", en, "Pn-300_1", -1, -1, 3, 2, "0x9929"},
        {"Pn-300", "Pn-300", en, "Pn-300_2", -1, -1, 2, 1, "0x9199"},
        {"Pn-300", "Pn-300", en, "Pn-300_3", -1, -1, 5, 4, "0x4999"},
        {"Pn-318", "Pn-318", both, "Pn-318_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-318", "Pn-318", both, "Pn-318_1", 3, 4, 2, 1, "0x9919"},
        {"Pn-324", "Pn-324", zh, "Pn-324_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-324", "Pn-324", zh, "Pn-324_1", 3, 4, 2, 1, "0x9919"},
        {"Pn-324", "Pn-324", zh, "Pn-324_2", 6, 7, 2, 1, "0x9199"},
        // The English row holds the lines of the Chinese Pn-326.
        {"Pn-324", "Pn-324", en, "Pn-324_0", 0, 1, 4, 3, "0x9993"},
        {"Pn-336", "Pn-336", zh, "Pn-336_0", 0, 1, 8, 7, "0x9997"},
        {"Pn-336", "Pn-336", zh, "Pn-336_1", 9, 10, 3, 2, "0x9929"},
        {"Pn-336", "Pn-336", zh, "Pn-336_2", 13, 14, 2, 1, "0x9199"},
        {"Pn-336", "Pn-336", zh, "Pn-336_3", 16, 17, 4, 3, "0x3999"},
        {"Pn-651", "Pn-651", both, "Pn-651_0", 0, 1, 11, 10, "0x999A"},
        {"Pn-651", "Pn-651", both, "Pn-651_1", 12, 13, 2, 1, "0x9919"},
        {"Pn-700", "Pn-700", both, "Pn-700_0", 0, 1, 3, 2, "0x9992"},
        {"Pn-700", "Pn-700", both, "Pn-700_1", 4, 5, 2, 1, "0x9919"},
        {"Pn-700", "Pn-700", both, "Pn-700_2", 7, 8, 2, 1, "0x9199"},
        {"Pn-700", "Pn-700", both, "Pn-700_3", 10, 11, 3, 2, "0x2999"},
        {"Pn-800", "Pn-800", both, "Pn-800_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-800", "Pn-800", both, "Pn-800_1", 3, 4, 2, 1, "0x9919"},
        {"Pn-800", "Pn-800", both, "Pn-800_2", 6, 7, 2, 1, "0x9199"},
        {"Pn-901", "Pn-901", both, "Pn-901_0", 0, 1, 5, 4, "0x9994"},
        {"Pn-901", "Pn-901", both, "Pn-901_1", 6, 7, 4, 3, "0x9939"},
        {"Pn-910", "Pn-910", both, "Pn-910_0", 0, 1, 7, 6, "0x9996"},
        {"Pn-911", "Pn-911", both, "Pn-911_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-911", "Pn-911", both, "Pn-911_1", 3, 4, 4, 3, "0x9939"},
        {"Pn-911", "Pn-911", both, "Pn-911_2", 8, 9, 11, 10, "0x9A99"},
        {"Pn-911", "Pn-911", both, "Pn-911_3", 20, 21, 3, 2, "0x2999"},
        {"Pn-912", "Pn-912", both, "Pn-912_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-912", "Pn-912", both, "Pn-912_1", 3, 4, 3, 2, "0x9929"},
        {"Pn-914", "Pn-914", both, "Pn-914_0", 0, 1, 4, 3, "0x9993"},
        {"Pn-914", "Pn-914", both, "Pn-914_1", 5, 6, 3, 2, "0x9929"},
        {"Pn-914", "Pn-914", both, "Pn-914_2", 9, 10, 2, 1, "0x9199"},
        {"Pn-914", "Pn-914", both, "Pn-914_3", 12, 13, 2, 1, "0x1999"},
        {"Pn-918", "Pn-918", both, "Pn-918_0", 0, 1, 3, 2, "0x9992"},
        {"Pn-918", "Pn-918", both, "Pn-918_1", 4, 5, 2, 1, "0x9919"},
        {"Pn-950", "Pn-950", en, "Pn-950_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-950", "Pn-950", en, "Pn-950_1", 3, 4, 2, 1, "0x9919"},
        {"Pn-951", "Pn-951", en, "Pn-951_0", 0, 1, 2, 1, "0x9991"},
        {"Pn-951", "Pn-951", en, "Pn-951_1", 3, 4, 3, 2, "0x9929"},
        {"Pn-952", "Pn-952", en, "Pn-952_0", 0, 1, 4, 3, "0x9993"},
        {"Pn-952", "Pn-952", en, "Pn-952_1", 5, 6, 4, 3, "0x9939"},
        {"Pn-952", "Pn-952", en, "Pn-952_2", 10, 11, 4, 3, "0x9399"},
        {"Pn-952", "Pn-952", en, "Pn-952_3", 15, 16, 4, 3, "0x3999"},
    };
}

inline QVector<BitFieldExpectation> choiceExpectations()
{
    struct Choice
    {
        const char *code;
        int optionCount;
        int index;
        const char *after;
        Files files = Files::Both;
    };
    const Choice choices[] = {
        // The choice becomes the text.
        {"Pn-011", 2, 1, "1"},
        {"Pn-012", 5, 4, "4"},
        {"Pn-016", 3, 2, "2"},
        {"Pn-100", 9, 8, "8"},
        {"Pn-101", 2, 1, "1"},
        {"Pn-103", 3, 2, "2"},
        {"Pn-104", 3, 1, "1"},
        {"Pn-105", 2, 1, "1"},
        {"Pn-106", 3, 2, "2"},
        {"Pn-639", 3, 2, "2"},
        {"Pn-662", 5, 3, "3"},
        {"Pn-719", 2, 1, "1"},
        {"Pn-814", 3, 2, "2"},
        {"Pn-913", 3, 1, "1"},
        // The choice takes the place of the first character.
        {"Pn-320", 2, 1, "15"},
        {"Pn-321", 4, 3, "35"},
        {"Pn-326", 4, 2, "25", Files::Chinese},
        {"Pn-342", 2, 1, "15", Files::Chinese},
        {"Pn-400", 3, 2, "25"},
        {"Pn-408", 5, 4, "45"},
        {"Pn-416", 4, 3, "35"},
        {"Pn-500", 3, 1, "15"},
        {"Pn-504", 4, 2, "25"},
        {"Pn-509", 3, 2, "25"},
        {"Pn-600", 3, 1, "15"},
        {"Pn-603", 2, 1, "15"},
        {"Pn-604", 2, 1, "15"},
        {"Pn-636", 3, 2, "25"},
        {"Pn-675", 4, 3, "35"},
        {"Pn-686", 4, 1, "15"},
        {"Pn-694", 3, 2, "25", Files::Chinese},
        {"Pn-801", 3, 2, "25"},
        {"Pn-803", 2, 1, "15"},
        {"Pn-804", 2, 1, "15"},
        {"Pn-806", 2, 1, "15"},
        {"Pn-810", 2, 1, "15"},
        {"Pn-817", 3, 2, "25"},
        {"Pn-904", 3, 1, "15"},
        {"Pn-A00", 3, 2, "25"},
        {"Pn-A02", 2, 1, "15"},
        {"Pn-B00", 3, 2, "25"},
        {"Pn-B02", 2, 1, "15"},
    };
    QVector<BitFieldExpectation> list;
    for (const Choice &choice : choices)
        list.append({choice.code, choice.code, choice.files, choice.code, 0, 1, choice.optionCount,
                     choice.index, choice.after});
    return list;
}
