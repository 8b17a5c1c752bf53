// The frame-blending pass: the frame just drawn is mixed with the previous
// blended frame by a fragment shader, leaving a fading trail behind moving
// vertices. The frame buffer is copied into power-of-two textures rather than
// drawn into an off-screen buffer.
#include <GL/gl.h>
#include <GL/glu.h>

#include "quillo/log.h"
#include "render/VXLNetworkView.h"
#include "render/scenecolours.h"

namespace {

// nw * new frame + pw * previous blended frame.
const char* const kBlurCode =
    "uniform sampler2D prevTex;uniform sampler2D nextTex;uniform float pw;uniform float "
    "nw;void main(void){   vec2 texCoord = gl_TexCoord[0].xy;   vec4 c = texture2D(nextTex, "
    "texCoord);   vec4 pp  = texture2D(prevTex, texCoord);   gl_FragColor = nw*c+pw*pp;}";

int nextPowerOfTwo(int n) {
  int p = 1;
  while (p < n) p *= 2;
  return p;
}

void bindLinearRepeat(GLuint texture) {
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
}

}  // namespace

void VXLNetworkView::createBlendingProgram() {
  gl_.programObject = glCreateProgram();
  gl_.fragmentShader = glCreateShader(GL_FRAGMENT_SHADER);
  glShaderSource(gl_.fragmentShader, 1, &kBlurCode, nullptr);
  glCompileShader(gl_.fragmentShader);
  glAttachShader(gl_.programObject, gl_.fragmentShader);
  glLinkProgram(gl_.programObject);
  GLint linked = GL_FALSE;
  glGetProgramiv(gl_.programObject, GL_LINK_STATUS, &linked);
  if (linked == GL_TRUE) return;
  setShader(false);
  quillo::logLine("Shader2 not linked");
  glDeleteProgram(gl_.programObject);
  glDeleteShader(gl_.fragmentShader);
  gl_.programObject = 0;
  gl_.fragmentShader = 0;
}

void VXLNetworkView::makeBlendingTextures(int width, int height) {
  // The textures of an earlier size are deleted rather than left behind.
  if (gl_.nextTex != 0) {
    const GLuint old[] = {gl_.iTexture, gl_.nextTex, gl_.prevTex};
    glDeleteTextures(3, old);
  }
  gl_.textureWidth = nextPowerOfTwo(width);
  gl_.textureHeight = nextPowerOfTwo(height);
  GLuint names[3];
  glGenTextures(3, names);
  for (GLuint texture : names) {
    bindLinearRepeat(texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, gl_.textureWidth, gl_.textureHeight, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, nullptr);
  }
  glBindTexture(GL_TEXTURE_2D, 0);
  gl_.iTexture = names[0];
  gl_.nextTex = names[1];
  gl_.prevTex = names[2];
  gl_.firstTimeTex = 1;
}

void VXLNetworkView::blendFrame() {
  if (gl_.programObject == 0) return;  // not linked: frames stay unblended
  const VXLCamera view = camera();
  const int W = view.viewWidth;
  const int H = view.viewHeight;
  if (W <= 0 || H <= 0) return;
  // Textures are made with the pass's first frame, and again when the size
  // changed while the pass was off.
  if (gl_.nextTex == 0 || gl_.textureWidth != nextPowerOfTwo(W) ||
      gl_.textureHeight != nextPowerOfTwo(H)) {
    makeBlendingTextures(W, H);
  }

  glDisable(GL_BLEND);
  glEnable(GL_TEXTURE_2D);
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);

  glActiveTexture(GL_TEXTURE0);
  bindLinearRepeat(gl_.nextTex);
  glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, W, H);

  glDepthMask(GL_TRUE);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glViewport(0, 0, W, H);
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  gluOrtho2D(-1, 1, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();

  glUseProgram(gl_.programObject);
  gl_.prevTexUnit = glGetUniformLocation(gl_.programObject, "prevTex");
  gl_.nextTexUnit = glGetUniformLocation(gl_.programObject, "nextTex");
  const GLint pw = glGetUniformLocation(gl_.programObject, "pw");
  const GLint nw = glGetUniformLocation(gl_.programObject, "nw");
  glActiveTexture(GL_TEXTURE1);
  bindLinearRepeat(gl_.prevTex);

  const auto history =
      gl_.firstTimeTex != 0 ? scene::BlendHistory::FirstFrame : scene::BlendHistory::Continuing;
  const scene::FrameWeights weights = scene::frameWeights(history, motionBlurFactor());
  gl_.firstTimeTex = 0;
  glUniform1f(pw, weights.previous);
  glUniform1f(nw, weights.next);
  glUniform1i(gl_.nextTexUnit, 0);
  glUniform1i(gl_.prevTexUnit, 1);
  glColor4f(1, 1, 1, 1);

  // The frame covers the lower left W x H of each texture.
  const float s = static_cast<float>(W) / static_cast<float>(gl_.textureWidth);
  const float t = static_cast<float>(H) / static_cast<float>(gl_.textureHeight);
  glBegin(GL_QUADS);
  glTexCoord2f(0, 0);
  glVertex3f(-1, -1, -0.5f);
  glTexCoord2f(s, 0);
  glVertex3f(1, -1, -0.5f);
  glTexCoord2f(s, t);
  glVertex3f(1, 1, -0.5f);
  glTexCoord2f(0, t);
  glVertex3f(-1, 1, -0.5f);
  glEnd();

  glUseProgram(0);
  glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);

  // The blended result is the next frame's previous image.
  glActiveTexture(GL_TEXTURE1);
  bindLinearRepeat(gl_.prevTex);
  glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, W, H);
  glActiveTexture(GL_TEXTURE0);
  glDisable(GL_TEXTURE_2D);
  glEnable(GL_BLEND);
}
