// Three tones by the sun, and a dark line where a surface turns away.
uniform sampler2D picture;
uniform float textured; // 1 or 0
varying vec3 normal;
varying vec3 seen;
varying float fog;

void main()
{
    vec3 n = normalize(normal);
    vec3 towardsEye = normalize(-seen);
    if (dot(n, towardsEye) < 0.0)
        n = -n;
    float light = max(dot(n, normalize(gl_LightSource[0].position.xyz)), 0.0);
    float tone = light > 0.62 ? 1.0 : light > 0.22 ? 0.66 : 0.34;
    vec3 base = gl_FrontMaterial.diffuse.rgb;
    if (textured > 0.5)
        base *= texture2D(picture, gl_TexCoord[0].st).rgb;
    vec3 colour = base * (gl_LightSource[0].ambient.rgb + tone * gl_LightSource[0].diffuse.rgb);
    float line = smoothstep(0.16, 0.26, dot(n, towardsEye));
    colour *= 0.25 + 0.75 * line;
    gl_FragColor = vec4(mix(gl_Fog.color.rgb, colour, fog), 1.0);
}
