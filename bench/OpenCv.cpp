// What comes nearest to an operation in OpenCV, on one thread: on premultiplied bytes, in place where OpenCV can. Matrices are
// kept from call to call.
#include "Pictures.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

constexpr int alpha = 3;
volatile double answer;

cv::Mat matOf(Picture& picture) {
    return cv::Mat(int(picture.info.height), int(picture.info.width), CV_8UC4, picture.pixels.get(), picture.info.stride);
}

// A case whose matrices are made once; `prepare` returns the call.
template <typename Prepare>
Case with(const char* op, Prepare prepare) {
    return {"opencv", op, [=](Pictures& pictures) -> std::function<void()> {
                cv::setNumThreads(1);
                return prepare(pictures);
            }};
}

// A linear function of the colour channels. OpenCV has vectors for three channels only, so it gets them without the alpha.
Case colourMatrix(const char* op, const cv::Matx33f& matrix) {
    return with(op, [=](Pictures& pictures) {
        cv::Mat from, to;
        cv::cvtColor(matOf(pictures.source(1)), from, cv::COLOR_RGBA2RGB);
        return [=]() mutable { cv::transform(from, to, matrix); };
    });
}

// A value of a picture and its alpha channel, which OpenCV wants apart.
template <typename Measure>
Case ofAlpha(const char* op, Picture& (*picture)(Pictures&), Measure measure) {
    return with(op, [=](Pictures& pictures) {
        return [=, words = matOf(picture(pictures)), mask = cv::Mat()]() mutable {
            cv::extractChannel(words, mask, alpha);
            answer = double(measure(words, mask));
        };
    });
}

Picture& destination(Pictures& pictures) { return pictures.destination; }
Picture& framed(Pictures& pictures) { return pictures.framed(); }

cv::Matx33f mixed(float intensity, const cv::Matx33f& tone) { return intensity * tone + (1 - intensity) * cv::Matx33f::eye(); }

const cv::Matx33f sepia(0.3588f, 0.299f, 0.2392f, 0.7044f, 0.587f, 0.4696f, 0.1368f, 0.144f, 0.0912f);
const cv::Matx33f luminance(0.2125f, 0.7154f, 0.0721f, 0.2125f, 0.7154f, 0.0721f, 0.2125f, 0.7154f, 0.0721f);
const cv::Matx33f tint = cv::Matx33f(0.6f, 0, 0, 0, 0.45f, 0, 0, 0, 0.3f) * luminance;

std::function<void()> vignette(Pictures& pictures) {
    cv::Mat picture = matOf(pictures.destination), mask(picture.size(), CV_8UC4);
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x) {
            const double d = std::hypot(double(x) / mask.cols - 0.5, double(y) / mask.rows - 0.5);
            const auto keep = cv::saturate_cast<unsigned char>(255 * (0.7 - d) / 0.5);
            mask.at<cv::Vec4b>(y, x) = {keep, keep, keep, 255};
        }
    return [=]() mutable { cv::multiply(picture, mask, picture, 1.0 / 255); };
}

std::function<void()> sharpen(Pictures& pictures) {
    const cv::Matx33f kernel(0, -0.5f, 0, -0.5f, 3, -0.5f, 0, -0.5f, 0);
    return [=, from = matOf(pictures.source(1)), to = matOf(pictures.destination)]() mutable {
        cv::filter2D(from, to, -1, kernel, {-1, -1}, 0, cv::BORDER_CONSTANT);
    };
}

std::function<void()> pixelate(Pictures& pictures) {
    return [picture = matOf(pictures.destination), small = cv::Mat()]() mutable {
        cv::resize(picture, small, {}, 0.125, 0.125, cv::INTER_NEAREST);
        cv::resize(small, picture, picture.size(), 0, 0, cv::INTER_NEAREST);
    };
}

// Means of the colour and spreads of the grey in a box, once: each of the four quadrants is the same box moved.
std::function<void()> kuwahara(Pictures& pictures) {
    constexpr int radius = 3, side = radius + 1;
    return [picture = matOf(pictures.destination), around = cv::Mat(), mean = cv::Mat(), grey = cv::Mat(), greyMean = cv::Mat(),
            spread = cv::Mat(), least = cv::Mat(), isLess = cv::Mat()]() mutable {
        cv::copyMakeBorder(picture, around, radius, radius, radius, radius, cv::BORDER_REPLICATE);
        cv::boxFilter(around, mean, -1, {side, side}, {0, 0});
        cv::cvtColor(around, grey, cv::COLOR_RGBA2GRAY);
        cv::boxFilter(grey, greyMean, CV_32F, {side, side}, {0, 0});
        cv::sqrBoxFilter(grey, spread, CV_32F, {side, side}, {0, 0});
        cv::multiply(greyMean, greyMean, greyMean);
        cv::subtract(spread, greyMean, spread);
        const cv::Rect first(cv::Point(0, 0), picture.size());
        mean(first).copyTo(picture);
        spread(first).copyTo(least);
        for (const cv::Point corner : {cv::Point(radius, 0), {0, radius}, {radius, radius}}) {
            const cv::Rect moved(corner, picture.size());
            cv::compare(spread(moved), least, isLess, cv::CMP_LT);
            mean(moved).copyTo(picture, isLess);
            cv::min(spread(moved), least, least);
        }
    };
}

std::function<void()> weightedSum(Pictures& pictures) {
    constexpr double kernel[] = {-2, -1, 0, -1, 1, 0, 1, 2};  // of the eight around the centre
    std::vector<cv::Mat> taps;
    for (int tap = 1; tap <= 8; ++tap) taps.push_back(matOf(pictures.source(tap)));
    return [=, centre = matOf(pictures.destination)]() mutable {
        for (std::size_t tap = 0; tap < taps.size(); ++tap) cv::addWeighted(centre, 1, taps[tap], kernel[tap], 0, centre);
    };
}

std::function<void()> threshold(Pictures& pictures) {
    return [picture = matOf(pictures.destination), grey = cv::Mat()]() mutable {
        cv::cvtColor(picture, grey, cv::COLOR_RGBA2GRAY);
        cv::threshold(grey, grey, 128, 255, cv::THRESH_BINARY);
    };
}

double median(const cv::Mat& picture, const cv::Mat& mask) {
    cv::Mat grey, histogram;
    cv::cvtColor(picture, grey, cv::COLOR_RGBA2GRAY);
    const int channel = 0, bins = 256;
    const float range[] = {0, 256};
    const float* ranges[] = {range};
    cv::calcHist(&grey, 1, &channel, mask, histogram, 1, &bins, ranges);
    double left = cv::sum(histogram)[0] / 2;
    int value = 0;
    while (value < bins && (left -= double(histogram.at<float>(value))) >= 0) ++value;
    return value;
}

double meanWhere(const cv::Mat& picture, const cv::Mat& mask) { return cv::mean(picture, mask)[0]; }
int visible(const cv::Mat&, const cv::Mat& mask) { return cv::countNonZero(mask); }
int bounds(const cv::Mat&, const cv::Mat& mask) { return cv::boundingRect(mask).width; }

const Added openCv({
    colourMatrix("sepia", mixed(0.6f, sepia)),
    colourMatrix("saturation", mixed(-0.5f, luminance)),
    colourMatrix("monochrome", mixed(0.6f, tint)),
    with("exposure",
         [](Pictures& pictures) {
             return [picture = matOf(pictures.destination)]() mutable { picture.convertTo(picture, -1, 1.4142135, 0); };
         }),
    with("vignette", vignette),
    with("sharpen", sharpen),
    with("pixelate", pixelate),
    with("kuwahara", kuwahara),
    with("emboss", weightedSum),
    with("black-and-white", threshold),
    ofAlpha("visible", destination, visible),
    ofAlpha("invisible", destination, visible),
    ofAlpha("average", destination, meanWhere),
    ofAlpha("average-from-alpha", destination, meanWhere),
    ofAlpha("cut-off", framed, bounds),
    ofAlpha("median", destination, median),
});

}  // namespace
