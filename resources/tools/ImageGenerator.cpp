// Draws the editor's images with the product's own painter and writes them as 32-bit TGA
// files, so that every picture of the editor is code a reviewer can read.
//
//   v4_images <output folder>
//
// Each image is written as <output folder>/<name>, its folders made as needed.
#include "graphics/DeviceSW.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"

#include <boost/filesystem.hpp>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace OV::CFW;
using namespace OV::CFW::Graphics;

// The palette: a calm dark panel, light text, one accent.
constexpr Color panelTop = 0xff2b2f36, panelBottom = 0xff1d2025;
constexpr Color bodyLight = 0xff4a505a, bodyDark = 0xff2a2e35, rim = 0xff14161a;
constexpr Color pointer = 0xfff2f4f7, accent = 0xff3fb6ff, track = 0xff3a3f48;

struct Canvas {
    Canvas(Device& device, int width, int height)
        : image(device.createImage({width, height})), painter(device.createPainter(*image))
    {
        painter->clear(0x00000000);
    }
    std::unique_ptr<Image> image;
    std::unique_ptr<Painter> painter;
};

// A 32-bit top-down TGA of the image.
void WriteTga(Image& image, const std::string& path)
{
    const int width = image.size().x, height = image.size().y;
    std::string file(18, '\0');
    file[2] = 2;
    file[12] = static_cast<char>(width & 0xff), file[13] = static_cast<char>(width >> 8);
    file[14] = static_cast<char>(height & 0xff), file[15] = static_cast<char>(height >> 8);
    file[16] = 32;
    file[17] = 32 | 8; // rows from the top, 8 bits of alpha
    const auto [pixels, pitch] = image.lock();
    for (int y = 0; y < height; ++y)
        file.append(reinterpret_cast<const char*>(pixels) + static_cast<std::ptrdiff_t>(y) * pitch, static_cast<std::size_t>(width) * 4);
    image.unlock();
    boost::filesystem::create_directories(boost::filesystem::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out.write(file.data(), static_cast<std::streamsize>(file.size())).flush())
        throw std::runtime_error("cannot write " + path);
}

Color Mix(Color a, Color b, double t)
{
    const auto channel = [&](int shift) {
        const double x = ((a >> shift) & 0xff) * (1.0 - t) + ((b >> shift) & 0xff) * t;
        return static_cast<Color>(std::lround(x)) << shift;
    };
    return channel(24) | channel(16) | channel(8) | channel(0);
}

// `count` points on a circle of radius r around (cx, cy), from angle a0 to a1 in radians.
std::vector<BasicPoint<double>> Arc(double cx, double cy, double r, double a0, double a1, int count)
{
    std::vector<BasicPoint<double>> points;
    for (int i = 0; i < count; ++i) {
        const double a = a0 + (a1 - a0) * i / (count - 1);
        points.push_back({cx + r * std::cos(a), cy + r * std::sin(a)});
    }
    return points;
}

void Disc(Painter& painter, Color color, double cx, double cy, double r)
{
    const auto points = Arc(cx, cy, r, 0.0, 2.0 * M_PI, 97);
    painter.fillPolygon(color, points.data(), static_cast<int>(points.size()) - 1, 1.0);
}

// The panel behind the editor: a soft vertical gradient with a hairline at the top.
std::unique_ptr<Image> Background(Device& device)
{
    Canvas canvas(device, 64, 560);
    for (int y = 0; y < 560; ++y)
        canvas.painter->fillRect(Mix(panelTop, panelBottom, y / 559.0) | 0xff000000, {0, y, 64, 1});
    canvas.painter->fillRect(0xff3a404a, {0, 0, 64, 1});
    return std::move(canvas.image);
}

// A knob strip: 128 frames of 48 x 48 from top to bottom, the pointer turning through 300
// degrees from lower left to lower right, and the value arc following it.
std::unique_ptr<Image> Knob(Device& device)
{
    constexpr int size = 48, frames = 128;
    Canvas canvas(device, size, size * frames);
    Painter& p = *canvas.painter;
    const double from = M_PI * (90.0 + 30.0) / 180.0, range = M_PI * 300.0 / 180.0;
    for (int frame = 0; frame < frames; ++frame) {
        const double c = size / 2.0, y0 = frame * size;
        const double value = frame / double(frames - 1);
        p.setOrigin({0, static_cast<int>(y0)});
        const auto all = Arc(c, c, 20.0, from, from + range, 64);
        p.drawPolyline(track, all.data(), static_cast<int>(all.size()), 3.0);
        if (frame > 0) {
            const auto lit = Arc(c, c, 20.0, from, from + range * value, 2 + static_cast<int>(62 * value));
            p.drawPolyline(accent, lit.data(), static_cast<int>(lit.size()), 3.0);
        }
        Disc(p, rim, c, c, 16.0);
        Disc(p, bodyDark, c, c, 15.0);
        Disc(p, bodyLight, c, c - 1.0, 13.5);
        Disc(p, Mix(bodyLight, bodyDark, 0.4) | 0xff000000, c, c, 13.0);
        const double a = from + range * value;
        p.drawLine(pointer, {c + 4.0 * std::cos(a), c + 4.0 * std::sin(a)}, {c + 11.5 * std::cos(a), c + 11.5 * std::sin(a)}, 2.5);
    }
    return std::move(canvas.image);
}

// A switch button: off above, on below, 40 x 20 each, a rounded body with a lamp.
std::unique_ptr<Image> Button(Device& device)
{
    constexpr int width = 40, height = 20;
    Canvas canvas(device, width, 2 * height);
    Painter& p = *canvas.painter;
    for (int state = 0; state < 2; ++state) {
        p.setOrigin({0, state * height});
        std::vector<BasicPoint<double>> body;
        for (const auto& [cx, a0] : {std::pair{10.0, M_PI * 0.5}, std::pair{30.0, -M_PI * 0.5}}) {
            const auto half = Arc(cx, 10.0, 8.5, a0, a0 + M_PI, 24);
            body.insert(body.end(), half.begin(), half.end());
        }
        p.fillPolygon(rim, body.data(), static_cast<int>(body.size()), 1.0);
        for (auto& point : body)
            point = {20.0 + (point.x - 20.0) * 0.92, 10.0 + (point.y - 10.0) * 0.85};
        p.fillPolygon(state == 1 ? Mix(bodyLight, accent, 0.25) | 0xff000000 : bodyDark, body.data(), static_cast<int>(body.size()), 1.0);
        Disc(p, state == 1 ? accent : track, 12.0, 10.0, 3.0);
    }
    return std::move(canvas.image);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: v4_images <output folder>\n");
        return 2;
    }
    const std::string folder = argv[1];
    DeviceSW device;
    const std::pair<const char*, std::function<std::unique_ptr<Image>(Device&)>> images[] = {
        {"VN4/Common/Background.tga", Background},
        {"VN4/Common/Knob.tga", Knob},
        {"VN4/Common/Button.tga", Button},
    };
    try {
        for (const auto& [name, draw] : images)
            WriteTga(*draw(device), folder + "/" + name);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "v4_images: %s\n", error.what());
        return 1;
    }
    return 0;
}
