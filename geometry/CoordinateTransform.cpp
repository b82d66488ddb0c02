// SPDX-License-Identifier: MIT
#include "geometry/CoordinateTransform.h"

#include "host/RecordVersion.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

IMPLEMENT_SERIAL(CoordinateTransform, CObject, VERSIONABLE_SCHEMA | 1)

namespace
{

constexpr double identity[16] = {1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0,
                                 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};

}  // namespace

CoordinateTransform::Settings::Settings() : scale(1.0, 1.0, 1.0)
{
    // The product of identity matrices is the identity, so the composite needs no Regenerate.
    for (double* const matrix : {compositeMatrix, externalMatrix, rotationMatrix})
    {
        LoadIdentity(matrix);
    }
}

void CoordinateTransform::Settings::Regenerate()
{
    double part[16];
    ComposeTranslationMatrix(translation, part);
    MultiplyMatricies(externalMatrix, part, compositeMatrix);
    MultiplyMatricies(compositeMatrix, rotationMatrix);
    ComposeScalingMatrix(scale, part);
    MultiplyMatricies(compositeMatrix, part);
}

bool CoordinateTransform::Settings::AreInitial() const
{
    // The bits are compared, because a negative zero that was loaded must be stored as a negative
    // zero again.
    const auto isSame = [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    };
    const auto isIdentity = [&isSame](const double(&matrix)[16]) {
        return std::equal(matrix, matrix + 16, identity, isSame);
    };
    return isIdentity(compositeMatrix) && isIdentity(externalMatrix) &&
           isIdentity(rotationMatrix) && scale.IsSameAs(DVector(1.0, 1.0, 1.0)) &&
           translation.IsSameAs(DVector());
}

CoordinateTransform::CoordinateTransform(const CoordinateTransform& other) : CObject(other)
{
    *this = other;
}

CoordinateTransform& CoordinateTransform::operator=(const CoordinateTransform& other)
{
    // Existing settings are overwritten, not allocated anew, because the program may have a pointer
    // to a matrix.
    if (settings_ != nullptr || other.settings_ != nullptr)
    {
        EnsureSettings() = other.CurrentSettings();
    }
    return *this;
}

const CoordinateTransform::Settings& CoordinateTransform::InitialSettings()
{
    // The object is never destroyed, because objects with static storage may need it while the
    // process ends.
    static const Settings* const initial = new Settings;
    return *initial;
}

const CoordinateTransform::Settings& CoordinateTransform::CurrentSettings() const
{
    return settings_ != nullptr ? *settings_ : InitialSettings();
}

CoordinateTransform::Settings& CoordinateTransform::EnsureSettings()
{
    if (settings_ == nullptr)
    {
        settings_ = std::make_unique<Settings>();
    }
    return *settings_;
}

void CoordinateTransform::Reset()
{
    if (settings_ != nullptr)
    {
        *settings_ = Settings();
    }
}

void CoordinateTransform::ResetRotation()
{
    if (settings_ != nullptr)
    {
        LoadIdentity();
        LoadIdentity(settings_->externalMatrix);
        settings_->Regenerate();
    }
}

void CoordinateTransform::LoadIdentity()
{
    if (settings_ != nullptr)
    {
        LoadIdentity(settings_->compositeMatrix);
        LoadIdentity(settings_->rotationMatrix);
    }
}

void CoordinateTransform::LoadIdentity(double* matrix)
{
    std::copy_n(identity, 16, matrix);
}

void CoordinateTransform::LoadComposite(const double* matrix)
{
    std::copy_n(matrix, 16, EnsureSettings().compositeMatrix);
}

void CoordinateTransform::SetScale(const DVector& newScale)
{
    Settings& own = EnsureSettings();
    own.scale = newScale;
    own.Regenerate();
}

void CoordinateTransform::SetTranslation(const DVector& newTranslation)
{
    Settings& own = EnsureSettings();
    own.translation = newTranslation;
    own.Regenerate();
}

void CoordinateTransform::SetRotation(double degrees, const DVector& axis)
{
    Settings& own = EnsureSettings();
    ComposeRotationMatrix(degrees, axis, own.rotationMatrix);
    own.Regenerate();
}

void CoordinateTransform::SetRotationMatrix(const double* matrix)
{
    Settings& own = EnsureSettings();
    std::copy_n(matrix, 16, own.rotationMatrix);
    own.Regenerate();
}

void CoordinateTransform::SetRotationMatrix(const float* matrix)
{
    Settings& own = EnsureSettings();
    std::copy_n(matrix, 16, own.rotationMatrix);
    own.Regenerate();
}

void CoordinateTransform::SetAlignmentRotation(const DVector& a, const DVector& b, const DVector& c)
{
    Settings& own = EnsureSettings();
    ComposeAlignmentRotationMatrix(a, b, c, own.rotationMatrix);
    own.Regenerate();
}

void CoordinateTransform::Rotate(double degrees, const DVector& axis)
{
    Settings& own = EnsureSettings();
    double turn[16];
    ComposeRotationMatrix(degrees, axis, turn);
    MultiplyMatricies(turn, own.rotationMatrix, own.rotationMatrix);
    own.Regenerate();
}

void CoordinateTransform::Scale(const DVector& factors)
{
    Settings& own = EnsureSettings();
    double scaling[16];
    ComposeScalingMatrix(factors, scaling);
    own.scale.SetDVector(own.scale.x * factors.x, own.scale.y * factors.y, own.scale.z * factors.z);
    MultiplyMatricies(own.compositeMatrix, scaling);
}

void CoordinateTransform::Translate(const DVector& offset)
{
    Settings& own = EnsureSettings();
    own.translation += offset;
    own.compositeMatrix[12] += offset.x;
    own.compositeMatrix[13] += offset.y;
    own.compositeMatrix[14] += offset.z;
}

void CoordinateTransform::Combine(const CoordinateTransform* other)
{
    Settings& own = EnsureSettings();
    MultiplyMatricies(other->CurrentSettings().compositeMatrix, own.externalMatrix,
                      own.externalMatrix);
    own.Regenerate();
}

void CoordinateTransform::CombineExternal(const CoordinateTransform* other)
{
    Settings& own = EnsureSettings();
    MultiplyMatricies(other->CurrentSettings().externalMatrix, own.externalMatrix,
                      own.externalMatrix);
    own.Regenerate();
}

void CoordinateTransform::ExternalToRotation()
{
    Settings& own = EnsureSettings();
    std::copy_n(own.externalMatrix, 16, own.rotationMatrix);
    std::fill_n(own.rotationMatrix + 12, 3, 0.0);
}

void CoordinateTransform::ExternalToTranslation()
{
    Settings& own = EnsureSettings();
    const double* const external = own.externalMatrix;
    own.translation.SetDVector(external[12], external[13], external[14]);
}

void CoordinateTransform::InvertRotations()
{
    Settings& own = EnsureSettings();
    ComposeInverseRotationMatrix(own.externalMatrix, own.externalMatrix);
    ComposeInverseRotationMatrix(own.rotationMatrix, own.rotationMatrix);
    own.Regenerate();
}

void CoordinateTransform::MultiplyMatricies(const double* a, const double* b, double* product)
{
    double result[16];
    for (int c = 0; c < 4; ++c)
    {
        for (int r = 0; r < 4; ++r)
        {
            result[4 * c + r] = a[r] * b[4 * c] + a[4 + r] * b[4 * c + 1] +
                                a[8 + r] * b[4 * c + 2] + a[12 + r] * b[4 * c + 3];
        }
    }
    std::copy_n(result, 16, product);
}

void CoordinateTransform::ComposeInverseRotationMatrix(const double* in, double* out)
{
    double result[16];
    std::copy_n(in, 16, result);
    std::swap(result[1], result[4]);
    std::swap(result[2], result[8]);
    std::swap(result[6], result[9]);
    std::copy_n(result, 16, out);
}

void CoordinateTransform::ComposeRotationMatrix(double degrees, const DVector& axis, double* matrix)
{
    const double radians = degrees * 3.141592654 * (1.0 / 180.0);
    const double s = std::sin(radians);
    const double c = std::cos(radians);
    // Normalizing does not change an axis of length 0. The upper 3 x 3 elements are then the cosine
    // on the diagonal and 0 elsewhere.
    DVector unit = axis;
    unit.Normalize();
    const double x = unit.x;
    const double y = unit.y;
    const double z = unit.z;

    LoadIdentity(matrix);
    matrix[0] = x * x + (1.0 - x * x) * c;
    matrix[1] = x * y * (1.0 - c) + z * s;
    matrix[2] = x * z * (1.0 - c) - y * s;
    matrix[4] = x * y * (1.0 - c) - z * s;
    matrix[5] = y * y + (1.0 - y * y) * c;
    matrix[6] = y * z * (1.0 - c) + x * s;
    matrix[8] = x * z * (1.0 - c) + y * s;
    matrix[9] = y * z * (1.0 - c) - x * s;
    matrix[10] = z * z + (1.0 - z * z) * c;
}

void CoordinateTransform::ComposeAlignmentRotationMatrix(const DVector& a, const DVector& b,
                                                         const DVector& c, double* matrix)
{
    DVector rows[3] = {a, b, c};
    LoadIdentity(matrix);
    for (int r = 0; r < 3; ++r)
    {
        rows[r].Normalize();
        matrix[r] = rows[r].x;
        matrix[4 + r] = rows[r].y;
        matrix[8 + r] = rows[r].z;
    }
}

void CoordinateTransform::ComposeScalingMatrix(const DVector& factors, double* matrix)
{
    LoadIdentity(matrix);
    matrix[0] = factors.x;
    matrix[5] = factors.y;
    matrix[10] = factors.z;
}

void CoordinateTransform::ComposeTranslationMatrix(const DVector& offset, double* matrix)
{
    LoadIdentity(matrix);
    matrix[12] = offset.x;
    matrix[13] = offset.y;
    matrix[14] = offset.z;
}

namespace
{
struct Triple
{
    double x;
    double y;
    double z;
};

template <typename AnyVector, typename Map>
void MapPoints(const AnyVector* in, AnyVector* out, int count, Map map)
{
    using Component = decltype(AnyVector::x);
    for (int i = 0; i < count; ++i)
    {
        const Triple result = map(Triple{in[i].x, in[i].y, in[i].z});
        out[i].x = static_cast<Component>(result.x);
        out[i].y = static_cast<Component>(result.y);
        out[i].z = static_cast<Component>(result.z);
    }
}

auto Transformer(const double* m)
{
    return [m](Triple p) {
        return Triple{m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12],
                      m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
                      m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
    };
}

auto Untransformer(const double* m)
{
    return [m](Triple p) {
        return Triple{m[0] * p.x + m[1] * p.y + m[2] * p.z - m[12],
                      m[4] * p.x + m[5] * p.y + m[6] * p.z - m[13],
                      m[8] * p.x + m[9] * p.y + m[10] * p.z - m[14]};
    };
}

auto Rotator(const double* m)
{
    return [m](Triple p) {
        return Triple{m[0] * p.x + m[4] * p.y + m[8] * p.z, m[1] * p.x + m[5] * p.y + m[9] * p.z,
                      m[2] * p.x + m[6] * p.y + m[10] * p.z};
    };
}

auto Unrotator(const double* m)
{
    return [m](Triple p) {
        return Triple{m[0] * p.x + m[1] * p.y + m[2] * p.z, m[4] * p.x + m[5] * p.y + m[6] * p.z,
                      m[8] * p.x + m[9] * p.y + m[10] * p.z};
    };
}

auto Scaler(const DVector& s)
{
    return [&s](Triple p) { return Triple{p.x * s.x, p.y * s.y, p.z * s.z}; };
}

auto Translator(const DVector& t)
{
    return [&t](Triple p) { return Triple{p.x + t.x, p.y + t.y, p.z + t.z}; };
}
}  // namespace

void CoordinateTransform::TransformVectors(const Vector* in, Vector* out, int count) const
{
    MapPoints(in, out, count, Transformer(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::TransformDVectors(const DVector* in, DVector* out, int count) const
{
    MapPoints(in, out, count, Transformer(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::UntransformVectors(const Vector* in, Vector* out, int count) const
{
    MapPoints(in, out, count, Untransformer(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::UntransformDVectors(const DVector* in, DVector* out, int count) const
{
    MapPoints(in, out, count, Untransformer(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::RotateVectors(const Vector* in, Vector* out, int count) const
{
    MapPoints(in, out, count, Rotator(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::RotateDVectors(const DVector* in, DVector* out, int count) const
{
    MapPoints(in, out, count, Rotator(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::UnrotateVectors(const Vector* in, Vector* out, int count) const
{
    MapPoints(in, out, count, Unrotator(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::UnrotateDVectors(const DVector* in, DVector* out, int count) const
{
    MapPoints(in, out, count, Unrotator(CurrentSettings().compositeMatrix));
}

void CoordinateTransform::ScaleVectors(const Vector* in, Vector* out, int count) const
{
    MapPoints(in, out, count, Scaler(CurrentSettings().scale));
}

void CoordinateTransform::ScaleDVectors(const DVector* in, DVector* out, int count) const
{
    MapPoints(in, out, count, Scaler(CurrentSettings().scale));
}

void CoordinateTransform::TranslateVectors(const Vector* in, Vector* out, int count) const
{
    MapPoints(in, out, count, Translator(CurrentSettings().translation));
}

void CoordinateTransform::TranslateDVectors(const DVector* in, DVector* out, int count) const
{
    MapPoints(in, out, count, Translator(CurrentSettings().translation));
}

void CoordinateTransform::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(CoordinateTransform));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(CoordinateTransform));
    // Settings::Serialize reads and writes, so it cannot be called for the constant settings; it
    // writes a copy of them.
    Settings(CurrentSettings()).Serialize(archive);
}

void CoordinateTransform::DeserializeVersion1(CArchive& archive)
{
    if (settings_ != nullptr)
    {
        settings_->Serialize(archive);
        return;
    }
    Settings loaded;
    loaded.Serialize(archive);
    if (!loaded.AreInitial())
    {
        EnsureSettings() = loaded;
    }
}

void CoordinateTransform::Settings::Serialize(CArchive& archive)
{
    for (double* const matrix : {compositeMatrix, externalMatrix, rotationMatrix})
    {
        for (int i = 0; i < 16; ++i)
        {
            if (archive.IsLoading())
            {
                archive >> matrix[i];
            }
            else
            {
                archive << matrix[i];
            }
        }
    }
    scale.Serialize(archive);
    translation.Serialize(archive);
}
