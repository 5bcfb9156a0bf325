// SPDX-License-Identifier: GPL-3.0-or-later
// The exponential of a small square matrix: what turns a linear differential equation into an exact step.
//
// Free functions, for any thread.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace kt500sim {

template <std::size_t N>
using Matrix = std::array<std::array<double, N>, N>;

template <std::size_t N>
Matrix<N> product(const Matrix<N> &a, const Matrix<N> &b)
{
    Matrix<N> result{};
    for (std::size_t row = 0; row < N; ++row) {
        for (std::size_t inner = 0; inner < N; ++inner) {
            for (std::size_t column = 0; column < N; ++column)
                result[row][column] += a[row][inner] * b[inner][column];
        }
    }
    return result;
}

/// By scaling, the Taylor series, and squaring.
template <std::size_t N>
Matrix<N> exponential(Matrix<N> matrix)
{
    double largest = 0;
    for (const auto &row : matrix) {
        double sum = 0;
        for (const double value : row)
            sum += std::fabs(value);
        largest = std::fmax(largest, sum);
    }
    int halvings = 0;
    for (; largest > 0.25; largest /= 2)
        ++halvings;
    for (auto &row : matrix) {
        for (double &value : row)
            value = std::ldexp(value, -halvings);
    }

    Matrix<N> result{};
    for (std::size_t i = 0; i < N; ++i)
        result[i][i] = 1;
    Matrix<N> term = result;
    constexpr int terms = 12; // 0.25 to the 12th over 12! is far below a double's last digit
    for (int n = 1; n <= terms; ++n) {
        term = product(term, matrix);
        for (std::size_t row = 0; row < N; ++row) {
            for (std::size_t column = 0; column < N; ++column) {
                term[row][column] /= n;
                result[row][column] += term[row][column];
            }
        }
    }
    for (int i = 0; i < halvings; ++i)
        result = product(result, result);
    return result;
}

} // namespace kt500sim
