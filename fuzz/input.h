// input.h - the bytes that decide what a run does, drawn one value after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

class Input {
public:
    Input(const uint8_t* pBytes, std::size_t size) : pNext(pBytes), pEnd(pBytes + size) {}

    // Whether every byte has been drawn.  Drawing goes on then: with zeroes, or with numbers that follow from the
    // bytes.
    bool IsEmpty() const
    {
        return pNext == pEnd;
    }
    void GoOnWithNumbers()
    {
        qwNumber |= 1;
    }

    uint8_t Byte()
    {
        const uint8_t bByte = IsEmpty() ? static_cast<uint8_t>(qwNumber >> 56) : *pNext++;
        qwNumber = qwNumber != 0 ? Next(qwNumber ^ bByte) : 0;
        return bByte;
    }

    template <class Value>
    Value Raw()
    {
        uint64_t qwValue = 0;
        for (std::size_t i = 0; i < sizeof(Value); ++i) {
            qwValue = qwValue << 8 | Byte();
        }
        return static_cast<Value>(qwValue);
    }

    // Numbers of a key's size: mostly small or at the edge of a table, sometimes anything.
    template <class Value>
    Value Key()
    {
        static constexpr uint32_t kEdges[] = {0, 4093, 4094, 4095, 4096, 96, 97, 0xFFFF, 0xFF, 0x7FFFFFFF, 0xFFFFFFFF};
        const uint8_t bKind = Byte();
        if (bKind < 0xC0) {
            return static_cast<Value>(bKind % 32 < 8 ? bKind % 8 : bKind % 32 - 7);
        }
        return bKind < 0xE0 ? static_cast<Value>(kEdges[bKind % (sizeof kEdges / sizeof kEdges[0])]) : Raw<Value>();
    }

    // Fills memory with a pattern: one value, small VLAN ids, small bytes or anything.
    void Fill(void* pTo, std::size_t size)
    {
        const uint8_t bKind = Byte();
        const uint8_t bValue = Byte();
        uint64_t qwState = bKind * 256U + bValue + 1U;
        auto* pBytes = static_cast<uint8_t*>(pTo);
        switch (bKind % 8) {
        case 0:
        case 1:
        case 2:
            std::memset(pBytes, bKind % 8 == 0 ? bValue : bKind % 8 - 1, size);
            break;
        case 3:
            FillWith(pBytes, size, qwState, 0x0FFF0FFF0FFF0FFF);
            break;
        case 4:
            FillWith(pBytes, size, qwState, 0x001F001F001F001F);
            break;
        case 5:
            FillWith(pBytes, size, qwState, 0x0303030303030303);
            break;
        case 6:
            FillWith(pBytes, size, qwState, ~uint64_t{0});
            break;
        default: // the input's own bytes, as far as they go
            for (std::size_t i = 0; i < size && !IsEmpty(); ++i) {
                pBytes[i] = Byte();
            }
        }
    }

private:
    static uint64_t Next(uint64_t qw)
    {
        return qw * 6364136223846793005U + 1442695040888963407U;
    }

    // A block of numbers, repeated: a region is filled at the speed of a copy.
    static void FillWith(uint8_t* pBytes, std::size_t size, uint64_t qwState, uint64_t qwMask)
    {
        constexpr std::size_t kBlock = 8 * 1021; // no divisor of a table's length
        const std::size_t first = size < kBlock ? size : kBlock;
        for (std::size_t i = 0; i < first; i += sizeof qwState) {
            qwState = Next(qwState);
            const uint64_t qwWord = (qwState ^ qwState >> 29) & qwMask;
            std::memcpy(pBytes + i, &qwWord, first - i < sizeof qwWord ? first - i : sizeof qwWord);
        }
        for (std::size_t i = first; i < size; i += first) {
            std::memcpy(pBytes + i, pBytes, size - i < first ? size - i : first);
        }
    }

    const uint8_t* pNext;
    const uint8_t* pEnd;
    uint64_t qwNumber = 0;
};
