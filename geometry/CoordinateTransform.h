// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"

#include <memory>

/// The placement of a scene node. A point is scaled, rotated, translated, and then transformed by
/// the external matrix.
///
/// A matrix is 16 doubles as glMultMatrixd takes them, column by column, for column vectors:
/// element 4 * c + r is row r of column c, and elements 12, 13, 14 hold the translation. Angles are
/// degrees, right-handed about the axis. An axis need not have unit length.
///
/// The composite matrix is the product of all settings and is stored, too. Functions whose comments
/// say so rebuild the composite from the settings. Scale and Translate change it directly instead;
/// a later rebuild can give another matrix.
///
/// Most transforms never change. The meshes of an imported file, for example, stay where the file
/// puts them. The settings take 448 bytes. They are therefore allocated only by the first change,
/// or by the first call that returns a pointer through which a matrix can be changed. Transforms
/// without settings of their own answer questions from one shared set of initial values. Loading a
/// record of initial values allocates nothing.
///
/// Its record is the version, the composite, external and rotation matrices, scale and translation.
class ORVANE_API CoordinateTransform : public CObject
{
    DECLARE_SERIAL(CoordinateTransform)

public:
    CoordinateTransform() = default;
    CoordinateTransform(const CoordinateTransform& other);
    CoordinateTransform& operator=(const CoordinateTransform& other);

    // The 16 doubles of a matrix. A pointer from a non-const function stays valid until the
    // transform is destroyed and shows every later change. A pointer from a const function must not
    // be kept: the first change of the transform moves the matrix.
    double* GetCompositeMatrix() { return EnsureSettings().compositeMatrix; }
    const double* GetCompositeMatrix() const { return CurrentSettings().compositeMatrix; }
    double* GetExternalMatrix() { return EnsureSettings().externalMatrix; }
    const double* GetExternalMatrix() const { return CurrentSettings().externalMatrix; }
    double* GetRotationMatrix() { return EnsureSettings().rotationMatrix; }
    const double* GetRotationMatrix() const { return CurrentSettings().rotationMatrix; }

    DVector GetScale() const { return CurrentSettings().scale; }
    DVector GetTranslation() const { return CurrentSettings().translation; }

    /// Makes every matrix the identity, the scale 1 and the translation 0.
    void Reset();
    /// Makes the rotation and the external matrix the identity, and rebuilds the composite.
    void ResetRotation();
    /// Makes the composite and the rotation the identity. Nothing else changes, and nothing is
    /// rebuilt.
    void LoadIdentity();
    static void LoadIdentity(double* matrix);
    /// Replaces the composite and nothing else.
    void LoadComposite(const double* matrix);

    // Each of these functions replaces a setting and rebuilds the composite.
    void SetScale(const DVector& newScale);
    void SetTranslation(const DVector& newTranslation);
    void SetRotation(double degrees, const DVector& axis);
    void SetRotationMatrix(const double* matrix);
    void SetRotationMatrix(const float* matrix);
    /// Sets the rotation that turns \p a onto the x axis, \p b onto the y axis and \p c onto the z
    /// axis. The three vectors must be perpendicular to each other and right-handed, and may have
    /// any length except 0.
    void SetAlignmentRotation(const DVector& a, const DVector& b, const DVector& c);

    /// Adds a rotation that is applied after the present rotation, and rebuilds the composite.
    void Rotate(double degrees, const DVector& axis);

    // Scale and Translate change a setting and, without a rebuild, the composite. Scale adds a
    // scale that is applied before everything else in the composite. Translate adds a translation
    // that is applied after everything else in the composite.
    void Scale(const DVector& factors);
    void Translate(const DVector& offset);

    /// Multiplies the external matrix by the composite of the other transform, so that points go
    /// through the old external matrix first and through the other composite last. Rebuilds the
    /// composite of this transform. \p other may be this transform.
    void Combine(const CoordinateTransform* other);
    /// Like Combine, with the external matrix of the other transform in place of its composite.
    void CombineExternal(const CoordinateTransform* other);

    /// Sets the rotation to the external matrix without its translation. Nothing is rebuilt.
    void ExternalToRotation();
    /// Sets the translation to the translation in the external matrix. Nothing is rebuilt.
    void ExternalToTranslation();
    /// Transposes the upper 3 x 3 elements of the external and of the rotation matrix, but not the
    /// external translation, and rebuilds the composite.
    void InvertRotations();

    // Operations on \p count points. The results replace the points or go to a second array; \p in
    // and \p out may be the same array. Everything is computed in double; the results for Vectors
    // are rounded to float. In the comments, M is the composite matrix.

    /// M times the point.
    void TransformVectors(const Vector* in, Vector* out, int count) const;
    void TransformDVectors(const DVector* in, DVector* out, int count) const;
    void TransformVectors(Vector* v, int count) const { TransformVectors(v, v, count); }
    void TransformDVectors(DVector* v, int count) const { TransformDVectors(v, v, count); }

    /// Multiplies the point by the transposed upper 3 x 3 elements of M, then subtracts the
    /// translation of M. This undoes Transform only if M does not scale and its rotation does not
    /// turn its translation. This is required; see the test
    /// UntransformIsNotAnInverseOfRotationPlusTranslation.
    void UntransformVectors(const Vector* in, Vector* out, int count) const;
    void UntransformDVectors(const DVector* in, DVector* out, int count) const;
    void UntransformVectors(Vector* v, int count) const { UntransformVectors(v, v, count); }
    void UntransformDVectors(DVector* v, int count) const { UntransformDVectors(v, v, count); }

    /// The upper 3 x 3 elements of M times the point.
    void RotateVectors(const Vector* in, Vector* out, int count) const;
    void RotateDVectors(const DVector* in, DVector* out, int count) const;
    void RotateVectors(Vector* v, int count) const { RotateVectors(v, v, count); }
    void RotateDVectors(DVector* v, int count) const { RotateDVectors(v, v, count); }

    /// The transposed upper 3 x 3 elements of M times the point.
    void UnrotateVectors(const Vector* in, Vector* out, int count) const;
    void UnrotateDVectors(const DVector* in, DVector* out, int count) const;
    void UnrotateVectors(Vector* v, int count) const { UnrotateVectors(v, v, count); }
    void UnrotateDVectors(DVector* v, int count) const { UnrotateDVectors(v, v, count); }

    /// The point times the scale setting, component by component.
    void ScaleVectors(const Vector* in, Vector* out, int count) const;
    void ScaleDVectors(const DVector* in, DVector* out, int count) const;
    void ScaleVectors(Vector* v, int count) const { ScaleVectors(v, v, count); }
    void ScaleDVectors(DVector* v, int count) const { ScaleDVectors(v, v, count); }

    /// The point plus the translation setting.
    void TranslateVectors(const Vector* in, Vector* out, int count) const;
    void TranslateDVectors(const DVector* in, DVector* out, int count) const;
    void TranslateVectors(Vector* v, int count) const { TranslateVectors(v, v, count); }
    void TranslateDVectors(DVector* v, int count) const { TranslateDVectors(v, v, count); }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

private:
    struct Settings
    {
        Settings();
        void Regenerate();
        void Serialize(CArchive& archive);
        /// Whether every number has the same bits as in a new transform.
        bool AreInitial() const;

        double compositeMatrix[16];  ///< external * translation * rotation * scale
        double externalMatrix[16];   ///< applied last, after the translation
        double rotationMatrix[16];
        DVector scale;
        DVector translation;
    };

    static const Settings& InitialSettings();
    const Settings& CurrentSettings() const;
    Settings& EnsureSettings();

    // The product may replace one of the operands.
    static void MultiplyMatricies(const double* a, const double* b, double* product);
    static void MultiplyMatricies(double* a, const double* b) { MultiplyMatricies(a, b, a); }
    static void ComposeInverseRotationMatrix(const double* in, double* out);

    static void ComposeRotationMatrix(double degrees, const DVector& axis, double* matrix);
    static void ComposeAlignmentRotationMatrix(const DVector& a, const DVector& b, const DVector& c,
                                               double* matrix);
    static void ComposeScalingMatrix(const DVector& factors, double* matrix);
    static void ComposeTranslationMatrix(const DVector& offset, double* matrix);

    std::unique_ptr<Settings> settings_;  // null until the first change
};
