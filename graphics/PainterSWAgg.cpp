// The painter's operations that go through AGG's scanline rasteriser: strokes, curves, polygons,
// images on a parallelogram and outline text.
#include "graphics/PainterSW.h"

#include "graphics/FontFTSWAgg.h"
#include "graphics/Image.h"

// AGG's headers are not clean under our warnings; they are not ours to change.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wimplicit-fallthrough"
#include <agg_basics.h>
#include <agg_conv_bspline.h>
#include <agg_conv_curve.h>
#include <agg_conv_stroke.h>
#include <agg_conv_transform.h>
#include <agg_gamma_functions.h>
#include <agg_image_accessors.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_base.h>
#include <agg_renderer_scanline.h>
#include <agg_rendering_buffer.h>
#include <agg_scanline_u.h>
#include <agg_span_allocator.h>
#include <agg_span_image_filter_rgba.h>
#include <agg_span_interpolator_linear.h>
#include <agg_trans_affine.h>
#pragma GCC diagnostic pop

#include <algorithm>
#include <cmath>

namespace OV::CFW::Graphics {

namespace {

// The coverage blend: AGG's plain RGBA blender in the arithmetic of its 2.4 line, which later
// releases round differently. With coverage c and colour alpha A, alpha = ((c + 1) * A) >> 8;
// above 254 the colour is set, otherwise out.X = ((C.X - D.X) * alpha + (D.X << 8)) >> 8 and
// out.A = D.A - ((D.A * alpha + 255) >> 8) + alpha. A colour of alpha 0 never reaches it: the
// pixel format skips it.
struct CoverageBlender {
    using color_type = agg::rgba8;
    using order_type = agg::order_bgra;
    using value_type = color_type::value_type;
    using calc_type = color_type::calc_type;
    using long_type = color_type::long_type;

    static void blend_pix(value_type* p, value_type r, value_type g, value_type b, value_type a, agg::cover_type cover)
    {
        blend_pix(p, r, g, b, static_cast<value_type>(((cover + 1u) * a) >> 8));
    }

    // At full coverage, ((255 + 1) * A) >> 8 is A.
    static void blend_pix(value_type* p, value_type r, value_type g, value_type b, value_type alpha)
    {
        if (alpha > 254) {
            p[order_type::R] = r;
            p[order_type::G] = g;
            p[order_type::B] = b;
            p[order_type::A] = 255;
            return;
        }
        const int a = alpha;
        const auto mix = [a](int d, int c) { return static_cast<value_type>(((c - d) * a + (d << 8)) >> 8); };
        p[order_type::R] = mix(p[order_type::R], r);
        p[order_type::G] = mix(p[order_type::G], g);
        p[order_type::B] = mix(p[order_type::B], b);
        const int da = p[order_type::A];
        p[order_type::A] = static_cast<value_type>(da - ((da * a + 255) >> 8) + a);
    }
};

using PixelFormat = agg::pixfmt_alpha_blend_rgba<CoverageBlender, agg::rendering_buffer>;

// Row 0 at `pixels`; with a negative pitch AGG wants the lowest row in memory, the last one.
void Attach(agg::rendering_buffer& buffer, std::uint32_t* pixels, int pitch, int width, int height)
{
    width = std::max(width, 0);
    height = std::max(height, 0);
    auto* first = reinterpret_cast<agg::int8u*>(pixels);
    if (pitch < 0 && height > 0)
        first += static_cast<std::ptrdiff_t>(height - 1) * pitch;
    buffer.attach(first, static_cast<unsigned>(width), static_cast<unsigned>(height), pitch);
}

agg::rgba8 ToAgg(Color color)
{
    return agg::rgba8(RedOf(color), GreenOf(color), BlueOf(color), AlphaOf(color));
}

// The caller's points as one path, moved by an offset, without a copy; closed on request.
class PointPath {
public:
    void set(const BasicPoint<double>* points, int count, const BasicPoint<int>& offset, bool closed)
    {
        this->points = points;
        this->count = count;
        dx = offset.x;
        dy = offset.y;
        this->closed = closed;
    }

    void rewind(unsigned) { index = 0; }

    unsigned vertex(double* x, double* y)
    {
        if (index < count) {
            *x = points[index].x + dx;
            *y = points[index].y + dy;
            return index++ == 0 ? agg::path_cmd_move_to : agg::path_cmd_line_to;
        }
        *x = *y = 0.0; // not read for the commands below
        if (index++ == count && closed)
            return agg::path_cmd_end_poly | agg::path_flags_close;
        return agg::path_cmd_stop;
    }

private:
    const BasicPoint<double>* points = nullptr;
    int count = 0;
    int index = 0;
    double dx = 0.0;
    double dy = 0.0;
    bool closed = false;
};

// The spline's interpolation step, in units of one point. Smoothness 0 picks it from the
// points: n² / Σ dᵢ² over the segments, at most 1 (one vertex a point).
double SplineStep(const BasicPoint<double>* points, int count, double smoothness)
{
    if (smoothness != 0.0)
        return 1.0 / smoothness;
    double sum = 0.0;
    for (int i = 1; i < count; ++i) {
        const double dx = points[i].x - points[i - 1].x;
        const double dy = points[i].y - points[i - 1].y;
        sum += dx * dx + dy * dy;
    }
    return std::min(static_cast<double>(count) * count / sum, 1.0);
}

template <typename Stroke>
void SetUp(Stroke& stroke, double width, agg::line_join_e join)
{
    stroke.width(width); // half on each side
    stroke.line_cap(agg::butt_cap);
    stroke.line_join(join);
    stroke.miter_limit(4.0);
    stroke.inner_miter_limit(1.01);
    stroke.approximation_scale(1.0);
}

}  // namespace

struct PainterSW::Agg {
    agg::rendering_buffer buffer;
    PixelFormat format{buffer};
    agg::renderer_base<PixelFormat> renderer{format};
    // Clipping in doubles, so that far-off coordinates never reach the integer conversion.
    agg::rasterizer_scanline_aa<agg::rasterizer_sl_clip_dbl> rasterizer;
    agg::scanline_u8 scanline;
    agg::span_allocator<agg::rgba8> spans; // grows by 256 pixels, never shrinks

    // The vertex pipelines live here as well, so their vertex buffers are reused too.
    PointPath path;
    agg::conv_bspline<PointPath> spline{path};
    agg::conv_stroke<PointPath> stroke{path};
    agg::conv_stroke<agg::conv_bspline<PointPath>> splineStroke{spline};

    template <typename VertexSource>
    void fill(VertexSource& source, Color color)
    {
        rasterizer.reset();
        rasterizer.add_path(source);
        agg::render_scanlines_aa_solid(rasterizer, scanline, renderer, ToAgg(color));
    }
};

void PainterSW::AggDeleter::operator()(Agg* agg) const
{
    delete agg;
}

PainterSW::Agg* PainterSW::CreateAgg(std::uint32_t* pixels, int pitch, int width, int height)
{
    auto* agg = new Agg;
    Attach(agg->buffer, pixels, pitch, width, height);
    agg->rasterizer.filling_rule(agg::fill_non_zero);
    agg->rasterizer.gamma(agg::gamma_none());
    return agg;
}

void PainterSW::UpdateAggClip()
{
    const BasicRect<int>& c = effectiveClip;
    agg->renderer.clip_box(c.x, c.y, c.x + c.width - 1, c.y + c.height - 1); // inclusive
    agg->rasterizer.clip_box(c.x, c.y, c.x + c.width, c.y + c.height);      // pixel edges
}

void PainterSW::drawLine(Color color, const BasicPoint<double>& from, const BasicPoint<double>& to, double width)
{
    if (effectiveClip.width < 1 || effectiveClip.height < 1)
        return;
    const BasicPoint<double> points[2] = {from, to};
    agg->path.set(points, 2, origin, false);
    SetUp(agg->stroke, width, agg::round_join);
    agg->fill(agg->stroke, color);
}

void PainterSW::drawPolyline(Color color, const BasicPoint<double>* points, int count, double width)
{
    if (!points || count < 2 || effectiveClip.width < 1 || effectiveClip.height < 1)
        return;
    agg->path.set(points, count, origin, false);
    SetUp(agg->stroke, width, agg::miter_join);
    agg->fill(agg->stroke, color);
}

void PainterSW::drawCurve(Color color, const BasicPoint<double>* points, int count, double width, double smoothness)
{
    if (!points || count < 2 || effectiveClip.width < 1 || effectiveClip.height < 1)
        return;
    const double step = SplineStep(points, count, smoothness);
    if (!(step > 0.0)) // a step that never advances would never end
        return;
    agg->path.set(points, count, origin, false);
    agg->spline.interpolation_step(step);
    SetUp(agg->splineStroke, width, agg::round_join);
    agg->fill(agg->splineStroke, color);
}

void PainterSW::fillPolygon(Color color, const BasicPoint<double>* points, int count, double smoothness)
{
    if (!points || count < 1 || effectiveClip.width < 1 || effectiveClip.height < 1)
        return;
    agg->path.set(points, count, origin, true);
    if (smoothness == 1.0) {
        agg->fill(agg->path, color);
        return;
    }
    const double step = SplineStep(points, count, smoothness);
    if (!(step > 0.0))
        return;
    agg->spline.interpolation_step(step);
    agg->fill(agg->spline, color);
}

void PainterSW::drawImageParallelogram(Image& image, const double* corners, const BasicRect<int>& sourceRect)
{
    const BasicPoint<int>& size = image.size();
    if (!corners || sourceRect.width < 1 || sourceRect.height < 1 || size.x < 1 || size.y < 1 || effectiveClip.width < 1 ||
        effectiveClip.height < 1)
        return;
    const BasicPoint<double> points[4] = {{corners[0], corners[1]},
                                          {corners[2], corners[3]},
                                          {corners[4], corners[5]},
                                          {corners[4] + corners[0] - corners[2], corners[5] + corners[1] - corners[3]}};
    // A flat parallelogram covers nothing, and its map to the source has no inverse.
    const double area = (points[1].x - points[0].x) * (points[2].y - points[1].y) - (points[1].y - points[0].y) * (points[2].x - points[1].x);
    if (!(std::fabs(area) > 0.0))
        return;
    const double parallelogram[6] = {points[0].x + origin.x, points[0].y + origin.y, points[1].x + origin.x,
                                     points[1].y + origin.y, points[2].x + origin.x, points[2].y + origin.y};
    // Destination to source: the three corners go to the source's top left, top right and
    // bottom right.
    agg::trans_affine toSource(parallelogram, sourceRect.x, sourceRect.y, static_cast<double>(sourceRect.x) + sourceRect.width,
                               static_cast<double>(sourceRect.y) + sourceRect.height);

    const std::pair<std::uint32_t*, int> bits = image.lock();
    agg::rendering_buffer imageBuffer;
    Attach(imageBuffer, bits.first, bits.second, size.x, size.y);
    PixelFormat imageFormat(imageBuffer);
    agg::image_accessor_clone<PixelFormat> source(imageFormat); // edge pixels repeat outwards
    agg::span_interpolator_linear<> interpolator(toSource);     // subpixel scale 256
    agg::span_image_filter_rgba_bilinear<agg::image_accessor_clone<PixelFormat>, agg::span_interpolator_linear<>> filter(
        source, interpolator);
    filter.filter_offset(0.5);

    agg->path.set(points, 4, origin, true);
    agg->rasterizer.reset();
    agg->rasterizer.add_path(agg->path);
    agg::render_scanlines_aa(agg->rasterizer, agg->scanline, agg->renderer, agg->spans, filter);
    image.unlock();
}

void PainterSW::DrawOutlineText(const Font& font, Color color, const std::string& text, const BasicPoint<int>& point)
{
    const auto* outline = dynamic_cast<const FontFTSW*>(&font);
    FontFTSW::Outlines* outlines = outline != nullptr ? outline->getOutlines() : nullptr;
    if (outlines == nullptr || effectiveClip.width < 1 || effectiveClip.height < 1)
        return;
    using Path = FontFTSW::Outlines::Engine::path_adaptor_type;
    constexpr double units = FontFTSW::Outlines::unitsPerPixel;
    // The pen's x in engine units, so that advances keep their fractions; its y in pixels.
    double penX = 0.0;
    double penY = point.y + origin.y + outline->getBaseline();
    const double baseX = point.x + origin.x;
    const double tracking = outline->getTracking() * units;
    outlines->cache.reset_last_glyph();
    for (const char c : text) {
        double kerning = 0.0;
        const agg::glyph_cache* glyph = outlines->next(c, kerning);
        if (glyph == nullptr)
            continue;
        penX += kerning;
        if (glyph->data_type == agg::glyph_data_outline) {
            outlines->cache.init_embedded_adaptors(glyph, 0.0, 0.0);
            agg::trans_affine place = agg::trans_affine_scaling(1.0 / units, 1.0);
            place *= agg::trans_affine_translation(penX / units + baseX, std::floor(penY + 0.5));
            agg::conv_transform<Path> placed(outlines->cache.path_adaptor(), place);
            agg::conv_curve<agg::conv_transform<Path>> flattened(placed);
            agg->fill(flattened, color);
        }
        penX += glyph->advance_x + tracking;
        penY += glyph->advance_y;
    }
}

void PainterSW::drawImageRotated(Image& image, const BasicPoint<double>& center, double angleDegrees,
                                 const BasicRect<int>& sourceRect, const BasicPoint<int>& pivot)
{
    constexpr double pi = 3.14159265358979323846;
    const double t = angleDegrees * pi / 180.0;
    const double c = std::cos(t);
    const double s = std::sin(t);
    const double w = sourceRect.width;
    const double h = sourceRect.height;
    const double px = pivot.x;
    const double py = pivot.y;
    const double local[6] = {-px, -py, w - px, -py, w - px, h - py};
    double corners[6];
    for (int i = 0; i < 6; i += 2) {
        corners[i] = local[i] * c - local[i + 1] * s + center.x;
        corners[i + 1] = local[i + 1] * c + local[i] * s + center.y;
    }
    drawImageParallelogram(image, corners, sourceRect);
}

void PainterSW::drawImageRotated(Image& image, const BasicPoint<double>& center, double angleDegrees,
                                 const BasicRect<int>& sourceRect)
{
    // The pivot takes in the rect's position while the corners do not, so a rect away from
    // (0, 0) lands shifted by that position. Widgets are drawn for it as it is.
    drawImageRotated(image, center, angleDegrees, sourceRect,
                     {sourceRect.x + sourceRect.width / 2, sourceRect.y + sourceRect.height / 2});
}

}  // namespace OV::CFW::Graphics
