#include "Written.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace {

template <typename Element>
std::vector<Element> elements(const std::string& bracketed) {
    std::vector<Element> list;
    std::istringstream parts(bracketed.substr(1, bracketed.size() - 2));
    for (std::string part; std::getline(parts, part, ',');) list.push_back(Element(std::stod(part)));
    return list;
}

const Call& callNamed(const std::string& name) {
    const auto isNamed = [&](const Call& each) { return each.name == name; };
    const auto found = std::find_if(allCalls().begin(), allCalls().end(), isNamed);
    if (found == allCalls().end()) throw std::invalid_argument("no operation: " + name);
    return *found;
}

// A number of the list: 0.5, 0x18183a, true, height/2, width*5/12.
double numberIn(const std::string& value, double width, double height) {
    if (value == "true" || value == "false") return value == "true" ? 1 : 0;
    const bool isWidth = value.rfind("width", 0) == 0, isHeight = value.rfind("height", 0) == 0;
    if (!isWidth && !isHeight) return value.rfind("0x", 0) == 0 ? double(std::stol(value, nullptr, 16)) : std::stod(value);
    double number = isWidth ? width : height;
    std::istringstream factors(value.substr(isWidth ? 5 : 6));
    char sign;
    for (double factor; factors >> sign >> factor;) number = sign == '*' ? number * factor : number / factor;
    return number;
}

}  // namespace

WrittenCall::WrittenCall(const std::string& written) : text(written), call(&callNamed(written.substr(0, written.find(' ')))) {
    std::istringstream words(written.substr(call->name.size()));
    given.ints.clear();
    for (std::string word; words >> word;)
        if (word == "null")
            given.nullArrays = true;
        else if (word[0] == '(')
            given.floats.elements = elements<jfloat>(word);
        else if (word[0] == '[')
            given.ints.push_back({elements<jint>(word)});
        else
            given.numbers.push_back(std::stod(word));
}

WrittenCall::Given WrittenCall::with(std::vector<jobject> bitmaps) const {
    Given arguments = given;
    arguments.bitmaps = std::move(bitmaps);
    return arguments;
}

std::function<double()> WrittenCall::prepare(std::vector<jobject> bitmaps) const {
    const auto kept = std::make_shared<Given>(with(std::move(bitmaps)));
    return [kept, prepared = call->prepare(*kept)] { return prepared(); };
}

std::vector<WrittenCall> usualCalls(const Call& call, double width, double height) {
    std::vector<std::string> texts{call.name};
    auto append = [&](const std::string& word) {
        for (std::string& text : texts) text += ' ' + word;
    };
    for (const auto& [name, type, value] : call.parameters)
        if (const std::size_t dots = value.find(".."); dots != std::string::npos) {
            texts.clear();
            for (int number = std::stoi(value); number <= std::stoi(value.substr(dots + 2)); ++number)
                texts.push_back(call.name + ' ' + std::to_string(number));
        } else if (type.rfind("int[", 0) == 0) {
            append('[' + (value.empty() ? "0,0,0,0" : value) + ']');
        } else if (type.rfind("float[", 0) == 0) {
            append('(' + value + ')');
        } else if (type != "bitmap" && type != "object") {
            char number[32];
            std::snprintf(number, sizeof number, "%.17g", numberIn(value, width, height));
            append(number);
        }
    return {texts.begin(), texts.end()};
}
