#pragma once

#include <random>
#include <string>
#include <vector>

namespace vantoro::test {

/// Text-like, repetitive and random stretches by turns, the same on every run.
inline std::string mixedData(std::size_t size, unsigned seed = 1)
{
    std::mt19937 random(seed);
    std::vector<std::string> words(400);
    for (auto& word : words) {
        word.resize(2 + random() % 9);
        for (auto& letter : word)
            letter = static_cast<char>('a' + random() % 26);
    }
    std::string data;
    while (data.size() < size) {
        switch (random() % 8) {
        case 0:
            data.append(random() % 500, static_cast<char>(random() % 256));
            break;
        case 1:
            for (auto left = random() % 300; left > 0; --left)
                data.push_back(static_cast<char>(random() % 256));
            break;
        case 2:
            if (!data.empty()) {
                const auto from = random() % data.size();
                data.append(data.substr(from, random() % 2000));
            }
            break;
        default:
            for (auto left = random() % 200; left > 0; --left) {
                const auto most = random() % words.size() + 1;
                data.append(words[random() % most]).push_back(random() % 12 == 0 ? '\n' : ' ');
            }
        }
    }
    data.resize(size);
    return data;
}

}
