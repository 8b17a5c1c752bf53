#pragma once
// The camera record and the navigation maths of the view: projection and
// model-view matrices, the virtual trackball, rotation composition, dolly,
// pan, scroll, preset views, slider mappings and the automatic spin. Plain
// functions, no GL: the renderer loads the matrices, picking reuses them.
#include <array>
#include <optional>

using Vec3d = std::array<double, 3>;
// Column-major 4x4, as OpenGL loads it.
using Matrix4 = std::array<double, 16>;

struct VXLCamera {
  Vec3d position{0, 0, 75.0};
  Vec3d direction{-0.0, -0.0, -75.0};
  Vec3d up{0, 1, 0};
  Vec3d rotationCenter{0, 0, 0};
  double aperture = 65.0;  // vertical field of view, degrees
  int viewWidth = 0;
  int viewHeight = 0;
};

// A rotation as (angle in degrees, axis x, y, z).
struct Rotation {
  float angle = 0;
  float x = 0;
  float y = 0;
  float z = 0;
  bool operator==(const Rotation&) const = default;
};

namespace camera {

// The reset camera: aperture 65, looking from (0, 0, 75) at the origin, y up,
// centred on `origin`; the world rotation's angle and x and y axis become 0.75
// (a deliberate small tilt), its z axis stays.
void resetCamera(VXLCamera& camera, Rotation& worldRotation, const Vec3d& origin);

struct Frustum {
  double left, right, bottom, top, zNear, zFar;
};
// h = tan(aperture / 2) * near; wide views span r h horizontally, tall views
// r = width / height below 1 widen vertically to h / r.
Frustum frustum(const VXLCamera& camera, float nearClip, float farClip);
Matrix4 frustumMatrix(const Frustum& f);

// Look from position to position + direction with up, then the drag's
// rotation (when given and its angle is not 0), the world rotation, the
// object rotation and a shift that puts the rotation centre at the origin.
Matrix4 modelView(const VXLCamera& camera, const std::optional<Rotation>& dragRotation,
                  const Rotation& worldRotation, const Rotation& objectRotation);
Matrix4 multiply(const Matrix4& a, const Matrix4& b);
// The matrix glRotate builds (the axis is normalised; a zero axis gives the
// identity).
Matrix4 rotationMatrix(const Rotation& rotation);

// Composes `delta` into `target` (delta applied after target) through unit
// quaternions; a result within 1e-7 of no rotation becomes (0, 1, 0, 0).
void addToRotationTrackball(const Rotation& delta, Rotation& target);

// The virtual trackball of one drag, in backing pixels.
struct Trackball {
  float radius = 0;
  int centerX = 0;
  int centerY = 0;
  std::array<float, 3> start{0, 0, 0};
};
Trackball trackballStart(int viewWidth, int viewHeight, double pointX, double pointY);
// The rotation from the press to the current point; nothing when the point
// moved less than 0.001 in both directions.
std::optional<Rotation> trackballRotation(const Trackball& ball, double pointX, double pointY);

// Dolly: z += -0.01 z dy (dy = start y - current y), at least 1.
void dolly(VXLCamera& camera, int startY, int currentY);
// Pan: x and y move by (start - current) z / 400.
void pan(VXLCamera& camera, int startX, int startY, int currentX, int currentY);
enum class ScrollTarget { Distance, Aperture };
// Scroll by d: the distance (z += -0.01 d z; at or below -1 it becomes 1) or,
// with Shift, the aperture (a += -0.005 d a, within [0.1, 179.9]; d = 0 does
// nothing). Answers whether the projection changed.
bool scroll(VXLCamera& camera, double delta, ScrollTarget target);

enum class PresetView { Top, Left, Front };
void presetView(PresetView view, VXLCamera& camera, Rotation& worldRotation, const Vec3d& origin);

// Slider mappings: scale 10^s, near 4^s, far 4^s * 2000.
float scaleForSlider(double s);
float nearForSlider(double s);
float farForSlider(double s);

// The automatic spin of one frame of t seconds.
struct Spin {
  std::array<float, 3> rotation{0, 0, 0};
  std::array<float, 3> velocity{0.3f, 0.1f, 0.2f};
  std::array<float, 3> acceleration{0.003f, -0.005f, 0.004f};
};
void updateObjectRotationForTimeDelta(Spin& spin, double t, Rotation& objectRotation);

}  // namespace camera
