// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"

#include <memory>

/// Placement of a scene node. A point is scaled, rotated, translated, then taken through the
/// external matrix.
///
/// A matrix is 16 doubles, column-major, for column vectors, ready for glMultMatrixd: element
/// 4 * c + r is row r of column c, and elements 12, 13, 14 hold the translation. Angles are
/// degrees, right-handed about the axis, which need not have unit length.
///
/// The composite matrix is kept ready. Operations that rebuild it from the separate settings say
/// so; Scale and Translate edit it in place instead, so that a later rebuild may move it.
///
/// Most transforms are never changed: all nodes of an imported file stay where the file has them.
/// The settings, 448 bytes, are therefore allocated by the first change, and by a pointer through
/// which a matrix can be changed. Questions to a transform that was never changed are answered from
/// one set of initial values that all of them share. Loading the initial values allocates nothing.
///
/// Its record is the version, the composite, external and rotation matrices, scale and translation.
class ORVANE_API CoordinateTransform : public CObject
{
    DECLARE_SERIAL(CoordinateTransform)

public:
    CoordinateTransform() = default;
    CoordinateTransform(const CoordinateTransform& other);
    CoordinateTransform& operator=(const CoordinateTransform& other);

    // The 16 doubles of a matrix. A changeable pointer stays valid, and shows every change, until
    // the transform is destroyed. A pointer to a constant transform's matrix is for looking at
    // once: the first change of the transform moves the matrix.
    double* GetCompositeMatrix() { return EnsureSettings().compositeMatrix; }
    const double* GetCompositeMatrix() const { return CurrentSettings().compositeMatrix; }
    double* GetExternalMatrix() { return EnsureSettings().externalMatrix; }
    const double* GetExternalMatrix() const { return CurrentSettings().externalMatrix; }
    double* GetRotationMatrix() { return EnsureSettings().rotationMatrix; }
    const double* GetRotationMatrix() const { return CurrentSettings().rotationMatrix; }

    DVector GetScale() const { return CurrentSettings().scale; }
    DVector GetTranslation() const { return CurrentSettings().translation; }

    /// Scale 1, no translation, and ResetRotation.
    void Reset();
    /// No rotation and no external matrix; rebuilds the composite.
    void ResetRotation();
    /// Composite and rotation become the identity; everything else stays, nothing is rebuilt.
    void LoadIdentity();
    static void LoadIdentity(double* matrix);
    /// Replaces the composite alone.
    void LoadComposite(const double* matrix);

    // These replace the setting and rebuild the composite.
    void SetScale(const DVector& newScale);
    void SetTranslation(const DVector& newTranslation);
    void SetRotation(double degrees, const DVector& axis);
    void SetRotationMatrix(const double* matrix);
    void SetRotationMatrix(const float* matrix);
    /// The rotation that takes a onto the x axis, b onto y and c onto z, for a right-handed set of
    /// perpendicular vectors of any length.
    void SetAlignmentRotation(const DVector& a, const DVector& b, const DVector& c);

    /// Rotates further, after the rotation so far; rebuilds the composite.
    void Rotate(double degrees, const DVector& axis);

    // These change the setting and edit the composite in place: the composite gets a further scale
    // before everything in it, and a further translation after everything in it.
    void Scale(const DVector& factors);
    void Translate(const DVector& offset);

    /// The external matrix is followed by the other's composite; rebuilds the composite. The
    /// transform itself may be given.
    void Combine(const CoordinateTransform* other);
    /// The same with the other's external matrix.
    void CombineExternal(const CoordinateTransform* other);

    /// The rotation becomes the external matrix without its translation. Nothing is rebuilt.
    void ExternalToRotation();
    /// The translation becomes that of the external matrix. Nothing is rebuilt.
    void ExternalToTranslation();
    /// Transposes the upper 3 x 3 of the external and the rotation matrix, leaving the external
    /// translation; rebuilds the composite.
    void InvertRotations();

    // Points, count at a time, in place or from one array to another (which may be the same). All
    // is computed in double; Vectors round the results to float. M is the composite.

    /// M applied to the point.
    void TransformVectors(const Vector* in, Vector* out, int count) const;
    void TransformDVectors(const DVector* in, DVector* out, int count) const;
    void TransformVectors(Vector* v, int count) const { TransformVectors(v, v, count); }
    void TransformDVectors(DVector* v, int count) const { TransformDVectors(v, v, count); }

    /// The transposed upper 3 x 3 of M applied to the point, then M's translation taken off. This
    /// undoes Transform only without scale and while the rotation leaves the translation unturned:
    /// meant so, see UntransformIsNotAnInverseOfRotationPlusTranslation.
    void UntransformVectors(const Vector* in, Vector* out, int count) const;
    void UntransformDVectors(const DVector* in, DVector* out, int count) const;
    void UntransformVectors(Vector* v, int count) const { UntransformVectors(v, v, count); }
    void UntransformDVectors(DVector* v, int count) const { UntransformDVectors(v, v, count); }

    /// The upper 3 x 3 of M applied to the point.
    void RotateVectors(const Vector* in, Vector* out, int count) const;
    void RotateDVectors(const DVector* in, DVector* out, int count) const;
    void RotateVectors(Vector* v, int count) const { RotateVectors(v, v, count); }
    void RotateDVectors(DVector* v, int count) const { RotateDVectors(v, v, count); }

    /// The transposed upper 3 x 3 of M applied to the point.
    void UnrotateVectors(const Vector* in, Vector* out, int count) const;
    void UnrotateDVectors(const DVector* in, DVector* out, int count) const;
    void UnrotateVectors(Vector* v, int count) const { UnrotateVectors(v, v, count); }
    void UnrotateDVectors(DVector* v, int count) const { UnrotateDVectors(v, v, count); }

    /// The point times the scale setting, by component.
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
        /// Whether every number is that of a new transform, to the bit.
        bool AreInitial() const;

        double compositeMatrix[16];  ///< external * translation * rotation * scale
        double externalMatrix[16];   ///< applied outside the node's own settings
        double rotationMatrix[16];
        DVector scale;
        DVector translation;
    };

    static const Settings& InitialSettings();
    const Settings& CurrentSettings() const;
    Settings& EnsureSettings();

    // The results may be one of the operands.
    static void MultiplyMatricies(const double* a, const double* b, double* product);
    static void MultiplyMatricies(double* a, const double* b) { MultiplyMatricies(a, b, a); }
    static void ComposeInverseRotationMatrix(const double* in, double* out);

    static void ComposeRotationMatrix(double degrees, const DVector& axis, double* matrix);
    static void ComposeAlignmentRotationMatrix(const DVector& a, const DVector& b, const DVector& c,
                                               double* matrix);
    static void ComposeScalingMatrix(const DVector& factors, double* matrix);
    static void ComposeTranslationMatrix(const DVector& offset, double* matrix);

    std::unique_ptr<Settings> settings_;  // null for a transform that was never changed
};
