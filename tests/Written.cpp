#include "Written.h"

#include <sstream>
#include <stdexcept>

namespace {

struct Given : Arguments {
    std::vector<double> numbers;
    std::size_t at = 0;

    jint integer() override { return jint(numbers.at(at++)); }
    double real() override { return numbers.at(at++); }
};

template <typename Element>
std::vector<Element> elements(const std::string& bracketed) {
    std::vector<Element> list;
    std::istringstream parts(bracketed.substr(1, bracketed.size() - 2));
    for (std::string part; std::getline(parts, part, ',');) list.push_back(Element(std::stod(part)));
    return list;
}

}  // namespace

WrittenCall::WrittenCall(const std::string& text) : written(text) {
    std::istringstream words(text);
    std::string word;
    words >> word;
    const auto isNamed = [&](const Call& each) { return each.name == word; };
    const auto found = std::find_if(allCalls().begin(), allCalls().end(), isNamed);
    if (found == allCalls().end()) throw std::invalid_argument("no operation: " + text);
    call = &*found;
    while (words >> word)
        if (word == "null")
            nullArrays = true;
        else if (word[0] == '(')
            floats.elements = elements<jfloat>(word);
        else if (word[0] == '[')
            ints.push_back({elements<jint>(word)});
        else
            numbers.push_back(std::stod(word));
}

double WrittenCall::run(std::vector<FakeBitmap*> bitmaps) const {
    Given given;
    given.bitmaps = std::move(bitmaps);
    given.numbers = numbers;
    given.ints = ints;
    given.floats = floats;
    given.nullArrays = nullArrays;
    return call->run(given);
}

int WrittenCall::run(FakeBitmap& base, FakeBitmap& layer) const {
    std::vector<FakeBitmap> copies(bitmaps() > 2 || changed() > 0 ? bitmaps() : 0, base);
    std::vector<FakeBitmap*> all;
    for (std::size_t i = 0; i < bitmaps(); ++i) all.push_back(i == changed() ? &base : i % 2 ? &layer : &copies.at(i));
    return int(run(all));
}
