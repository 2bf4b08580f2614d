#pragma once

#include "engine/codecs/ppmd.h"

namespace vantoro {

/// The range decoder of 7z: 32 bits of code, renormalised below 2^24.
class PpmdSevenZipCoder {
public:
    bool start(PpmdInput& in)
    {
        m_in = &in;
        const bool sound = in.next() == 0;
        m_range = 0xFFFFFFFF;
        m_code = 0;
        for (int i = 0; i < 4; ++i)
            m_code = m_code << 8 | in.next();
        return sound && m_code < m_range;
    }
    std::uint32_t threshold(std::uint32_t total)
    {
        m_range /= total;
        return m_code / m_range;
    }
    void decode(std::uint32_t start, std::uint32_t size)
    {
        m_code -= start * m_range;
        m_range *= size;
        normalise();
    }
    /// One of two symbols; `chance` of 2^14 for the first.
    bool second(std::uint32_t chance)
    {
        const auto bound = (m_range >> 14) * chance;
        const bool isSecond = m_code >= bound;
        if (isSecond) {
            m_code -= bound;
            m_range -= bound;
        } else {
            m_range = bound;
        }
        normalise();
        return isSecond;
    }
    bool isAtRest() const { return m_code == 0; }

private:
    void normalise()
    {
        while (m_range < 1U << 24) {
            m_code = m_code << 8 | m_in->next();
            m_range <<= 8;
        }
    }
    PpmdInput* m_in = nullptr;
    std::uint32_t m_range = 0, m_code = 0;
};

/// The range decoder of rar and zip, which never carries into bytes already written.
class PpmdCarrylessCoder {
public:
    bool start(PpmdInput& in)
    {
        m_in = &in;
        m_low = 0;
        m_range = 0xFFFFFFFF;
        m_code = 0;
        for (int i = 0; i < 4; ++i)
            m_code = m_code << 8 | in.next();
        return m_code < m_range;
    }
    std::uint32_t threshold(std::uint32_t total)
    {
        m_range /= total;
        return m_range == 0 ? total : (m_code - m_low) / m_range; // a range of 0 only comes out of damage
    }
    void decode(std::uint32_t start, std::uint32_t size)
    {
        m_low += start * m_range;
        m_range *= size;
        while (true) {
            if ((m_low ^ (m_low + m_range)) >= kTop) {
                if (m_range >= kBottom)
                    return;
                m_range = (0 - m_low) & (kBottom - 1);
            }
            m_code = m_code << 8 | m_in->next();
            m_range <<= 8;
            m_low <<= 8;
            if (m_range == 0) [[unlikely]]
                return;
        }
    }
    bool second(std::uint32_t chance)
    {
        const bool isSecond = threshold(kBinaryTotal) >= chance;
        if (isSecond)
            decode(chance, kBinaryTotal - chance);
        else
            decode(0, chance);
        return isSecond;
    }
    bool isAtRest() const { return m_code == m_low; }

private:
    static constexpr std::uint32_t kTop = 1U << 24, kBottom = 1U << 15, kBinaryTotal = 1U << 14;
    PpmdInput* m_in = nullptr;
    std::uint32_t m_low = 0, m_range = 0, m_code = 0;
};

}
