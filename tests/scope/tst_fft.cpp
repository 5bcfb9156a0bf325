// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/fft.h"
#include "scope/spectrum.h"

#include <QTest>

#include <cmath>
#include <complex>
#include <random>
#include <vector>

namespace {

using Values = QVector<QPair<double, double>>;

Values complexOf(const QVector<double> &real)
{
    Values values;
    for (const double r : real)
        values.append({r, 0.0});
    return values;
}

// The transform in halves, in extended precision: that of the even samples and that of the odd ones.
std::vector<std::complex<long double>> inHalves(const std::vector<std::complex<long double>> &x)
{
    const std::size_t n = x.size();
    if (n == 1)
        return x;
    std::vector<std::complex<long double>> parts[2];
    for (std::size_t i = 0; i < n; ++i)
        parts[i % 2].push_back(x[i]);
    const auto even = inHalves(parts[0]);
    const auto odd = inHalves(parts[1]);
    std::vector<std::complex<long double>> out(n);
    for (std::size_t k = 0; k < n / 2; ++k) {
        const long double angle = -6.283185306L * static_cast<long double>(k) / static_cast<long double>(n);
        const auto turned = std::complex<long double>(std::cos(angle), std::sin(angle)) * odd[k];
        out[k] = even[k] + turned;
        out[k + n / 2] = even[k] - turned;
    }
    return out;
}

// The sum that defines the transform, in extended precision, with the same cut two pi.
Values definition(const QVector<double> &x)
{
    const int n = x.size();
    const long double step = -6.283185306L / n;
    Values out;
    for (int k = 0; k < n; ++k) {
        std::complex<long double> sum;
        for (int i = 0; i < n; ++i) {
            // The angle goes once around for every n; the cut constant makes half a turn a sign.
            const long long turns = static_cast<long long>(i) * k;
            const long long rest = turns % n;
            const long double sign = rest >= n / 2 ? -1 : 1;
            const long double angle = static_cast<long double>(rest % (n / 2)) * step;
            sum += static_cast<long double>(x.at(i)) * sign *
                   std::complex<long double>(std::cos(angle), std::sin(angle));
        }
        out.append({static_cast<double>(sum.real()), static_cast<double>(sum.imag())});
    }
    return out;
}

QVector<double> signalOf(const QByteArray &kind, int n)
{
    std::mt19937 random(3);
    std::normal_distribution<double> normal;
    QVector<double> x(n);
    for (int i = 0; i < n; ++i) {
        if (kind == "sines")
            x[i] = 3 * std::sin(2 * M_PI * 5 * i / n) + std::cos(2 * M_PI * 17.3 * i / n);
        else if (kind == "step")
            x[i] = i < n / 3 ? -2 : 7;
        else
            x[i] = normal(random);
    }
    return x;
}

QVector<double> sine(double amplitude, double hertz, int count)
{
    QVector<double> y(count);
    for (int i = 0; i < count; ++i)
        y[i] = amplitude * std::sin(2 * M_PI * hertz * i / 8000);
    return y;
}

} // namespace

class FftTest : public QObject
{
    Q_OBJECT

private slots:
    void impossibleSizesAreRefused_data();
    void impossibleSizesAreRefused();
    void transformEqualsItsDefinition_data();
    void transformEqualsItsDefinition();
    void everySizeEqualsTheTransformInHalves();
    void largeTransformFindsItsSines();
    void outputMayBeTheInputOrLonger();
    void constantIsCutAfterNineDecimals();
    void sizesAreChangedFreely();
    void sizeIsTheFirstThatHoldsTheSamples_data();
    void sizeIsTheFirstThatHoldsTheSamples();
    void constantReadsItselfInTheFirstBin();
    void sineThatFillsItsSpanReadsItsAmplitude();
    void paddingKeepsTheScaleOfTheSamples();
    void binsAreNamedInHertz_data();
    void binsAreNamedInHertz();
    void noSamplesGiveNoSpectrum();
    void surplusSamplesAreIgnored();
};

void FftTest::impossibleSizesAreRefused_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("inputSize");
    QTest::addColumn<int>("outputSize");
    QTest::newRow("one") << 1 << 4 << 4;
    QTest::newRow("none") << 0 << 4 << 4;
    QTest::newRow("negative") << -4 << 4 << 4;
    QTest::newRow("no power of two") << 6 << 8 << 8;
    QTest::newRow("no input") << 4 << 0 << 4;
    QTest::newRow("no output") << 4 << 4 << 0;
    QTest::newRow("short input") << 8 << 4 << 8;
    QTest::newRow("short output") << 8 << 8 << 4;
}

void FftTest::impossibleSizesAreRefused()
{
    QFETCH(int, n);
    QFETCH(int, inputSize);
    QFETCH(int, outputSize);
    const Values input(inputSize, {1.0, 0.0});
    Values output(outputSize, {-7.0, -7.0});
    fft transformer;
    QVERIFY(!transformer.transform(input, n, output));
    QCOMPARE(output, Values(outputSize, {-7.0, -7.0}));
}

void FftTest::transformEqualsItsDefinition_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("n");
    for (const char *kind : {"sines", "step", "noise"})
        for (const int n : {2, 4, 8, 64, 1024})
            QTest::newRow(QByteArray(kind) + ", " + QByteArray::number(n)) << QByteArray(kind) << n;
}

void FftTest::transformEqualsItsDefinition()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, n);
    const QVector<double> x = signalOf(kind, n);
    const Values expected = definition(x);
    Values output(n);
    fft transformer;
    QVERIFY(transformer.transform(complexOf(x), n, output));
    double scale = 0;
    for (const auto &value : expected)
        scale = std::max(scale, std::hypot(value.first, value.second));
    std::vector<std::complex<long double>> samples(x.begin(), x.end());
    const auto halves = inHalves(samples);
    for (int k = 0; k < n; ++k) {
        const auto &half = halves[static_cast<std::size_t>(k)];
        QVERIFY(std::hypot(output.at(k).first - double(half.real()),
                           output.at(k).second - double(half.imag())) <= 1e-12 * scale);
        const double off = std::hypot(output.at(k).first - expected.at(k).first,
                                      output.at(k).second - expected.at(k).second);
        // The butterflies take products of factors with the cut constant, the sum takes one: they differ by
        // its effect, up to some parts in a thousand million.
        QVERIFY2(off <= 4e-9 * scale, QByteArray::number(off / scale).constData());
    }
}

void FftTest::everySizeEqualsTheTransformInHalves()
{
    fft transformer;
    // Small ones, squares of elements, blocks in the cache and beyond them; odd and even numbers of stages.
    for (int n = 2; n <= 131072; n *= 2) {
        const QVector<double> x = signalOf("noise", n);
        Values output(n);
        QVERIFY(transformer.transform(complexOf(x), n, output));
        const auto expected = inHalves({x.begin(), x.end()});
        for (int k = 0; k < n; ++k) {
            const std::complex<double> off(output.at(k).first - double(expected[std::size_t(k)].real()),
                                           output.at(k).second - double(expected[std::size_t(k)].imag()));
            QVERIFY2(std::abs(off) <= 1e-13 * n, QByteArray::number(n).constData());
        }
    }
}

void FftTest::outputMayBeTheInputOrLonger()
{
    for (const int n : {8, 4096}) {
        const Values input = complexOf(signalOf("noise", n));
        Values apart(n);
        Values inPlace = input;
        fft transformer;
        QVERIFY(transformer.transform(input, n, apart));
        QVERIFY(transformer.transform(inPlace, n, inPlace));
        QCOMPARE(inPlace, apart);
        // What stands behind the result stays.
        Values longer(n + 1, {7.0, 7.0});
        QVERIFY(transformer.transform(input, n, longer));
        QCOMPARE(longer.mid(0, n), apart);
        QCOMPARE(longer.last(), qMakePair(7.0, 7.0));
    }
}

void FftTest::largeTransformFindsItsSines()
{
    // Beyond the part that is worked through block by block.
    const int n = 65536;
    QVector<double> x(n);
    for (int i = 0; i < n; ++i)
        x[i] = 2.5 + std::sin(2 * M_PI * 300 * i / n) + 0.25 * std::cos(2 * M_PI * 20001.0 * i / n);
    Values output(n);
    fft transformer;
    QVERIFY(transformer.transform(complexOf(x), n, output));
    for (int k = 0; k < n; ++k) {
        const double re = output.at(k).first / n;
        const double im = output.at(k).second / n;
        double expectedRe = 0;
        double expectedIm = 0;
        if (k == 0)
            expectedRe = 2.5;
        else if (k == 300 || k == n - 300)
            expectedIm = k == 300 ? -0.5 : 0.5;
        else if (k == 20001 || k == n - 20001)
            expectedRe = 0.125;
        QVERIFY2(std::abs(re - expectedRe) < 2e-8 && std::abs(im - expectedIm) < 2e-8,
                 QByteArray::number(k).constData());
    }
}

void FftTest::constantIsCutAfterNineDecimals()
{
    // The quarter turn is not quite one: cos(6.283185306 / 4) is 2.9e-10, not 6e-17.
    const Values input{{0, 0}, {1, 0}, {0, 0}, {0, 0}};
    Values output(4);
    fft transformer;
    QVERIFY(transformer.transform(input, 4, output));
    const double off = output.at(1).first;
    QVERIFY2(off > 2.9e-10 && off < 3.0e-10, QByteArray::number(off).constData());
}

void FftTest::sizesAreChangedFreely()
{
    fft transformer;
    for (const int n : {8, 2, 64, 8}) {
        const Values input(n, {3.0, 0.0});
        Values output(n);
        QVERIFY(transformer.transform(input, n, output));
        QVERIFY(qAbs(output.at(0).first - 3.0 * n) < 1e-12);
        for (int k = 1; k < n; ++k)
            QVERIFY(std::hypot(output.at(k).first, output.at(k).second) < 1e-7);
    }
}

void FftTest::sizeIsTheFirstThatHoldsTheSamples_data()
{
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("size");
    const QVector<QPair<int, int>> rows{{1, 2},
                                        {2, 2},
                                        {3, 4},
                                        {128, 128},
                                        {129, 512},
                                        {200, 512},
                                        {256, 512},
                                        {257, 512},
                                        {512, 512},
                                        {513, 1024},
                                        {800000, 1048576},
                                        {1048577, 2097152},
                                        {2097152, 2097152},
                                        {2097153, 2097152}};
    for (const auto &row : rows)
        QTest::newRow(QByteArray::number(row.first)) << row.first << row.second;
}

void FftTest::sizeIsTheFirstThatHoldsTheSamples()
{
    QFETCH(int, samples);
    QFETCH(int, size);
    QCOMPARE(spectrumSize(samples), size);
}

void FftTest::constantReadsItselfInTheFirstBin()
{
    fft transformer;
    const Spectrum s = spectrumOf(QVector<double>(1024, 3.0), &transformer);
    QCOMPARE(s.amplitude.size(), 512);
    QVERIFY(qAbs(s.amplitude.at(0) - 3.0) < 1e-12);
    for (int i = 1; i < s.amplitude.size(); ++i)
        QVERIFY(s.amplitude.at(i) < 1e-7);
}

void FftTest::sineThatFillsItsSpanReadsItsAmplitude()
{
    fft transformer;
    // Bin 64 of 1024 at 8000 samples a second is 500 Hz.
    const Spectrum s = spectrumOf(sine(7.5, 500, 1024), &transformer);
    QCOMPARE(s.frequency.at(64), 500.0);
    for (int i = 0; i < s.amplitude.size(); ++i)
        QVERIFY2(qAbs(s.amplitude.at(i) - (i == 64 ? 7.5 : 0.0)) < 1e-7, QByteArray::number(i).constData());
}

void FftTest::paddingKeepsTheScaleOfTheSamples()
{
    fft transformer;
    // 300 samples on 512: the first bin is the mean of the 300.
    const Spectrum s = spectrumOf(QVector<double>(300, 4.0), &transformer);
    QCOMPARE(s.amplitude.size(), 256);
    QVERIFY(qAbs(s.amplitude.at(0) - 4.0) < 1e-12);
}

void FftTest::binsAreNamedInHertz_data()
{
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("bins");
    QTest::addColumn<double>("apart");
    QTest::newRow("one") << 1 << 1 << 4000.0;
    QTest::newRow("128") << 128 << 64 << 62.5;
    QTest::newRow("200") << 200 << 256 << 15.625;
    QTest::newRow("1024") << 1024 << 512 << 7.8125;
}

void FftTest::binsAreNamedInHertz()
{
    QFETCH(int, samples);
    QFETCH(int, bins);
    QFETCH(double, apart);
    fft transformer;
    const Spectrum s = spectrumOf(QVector<double>(samples, 1.0), &transformer);
    QCOMPARE(s.frequency.size(), bins);
    QCOMPARE(s.frequency.first(), 0.0);
    QCOMPARE(s.frequency.last(), 4000.0 - apart);
    if (bins > 1)
        QCOMPARE(s.frequency.at(1), apart);
}

void FftTest::noSamplesGiveNoSpectrum()
{
    fft transformer;
    const Spectrum s = spectrumOf({}, &transformer);
    QVERIFY(s.frequency.isEmpty());
    QVERIFY(s.amplitude.isEmpty());
}

void FftTest::surplusSamplesAreIgnored()
{
    fft transformer;
    QVector<double> y(2097152, 0.0);
    y[0] = 1.0;
    const Spectrum whole = spectrumOf(y, &transformer);
    y.append(1e9);
    const Spectrum more = spectrumOf(y, &transformer);
    QCOMPARE(more.amplitude.size(), 1048576);
    QVERIFY(qAbs(whole.amplitude.at(5) - 2.0 / 2097152) < 1e-15);
    QVERIFY(qAbs(more.amplitude.at(5) - 2.0 / 2097153) < 1e-15);
}

QTEST_APPLESS_MAIN(FftTest)
#include "tst_fft.moc"
