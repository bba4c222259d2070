// Ripples, the sky in them, stronger the flatter one looks, and the sun's glitter.
uniform float time; // seconds
uniform vec3 eye;
uniform vec3 towardsLight;
uniform vec3 sunlight;
uniform vec3 horizon;
uniform vec3 zenith;
varying vec3 place;
varying float fog;

vec2 slope(vec2 at, vec2 along, float length, float height, float speed)
{
    float k = 6.2832 / length;
    return along * height * k * cos(k * dot(at, along) + speed * time);
}

void main()
{
    vec3 towardsEye = eye - place;
    float distance = length(towardsEye);
    towardsEye /= distance;

    vec2 tilt = slope(place.xz, vec2(0.80, 0.60), 17.0, 0.16, 1.1);
    tilt += slope(place.xz, vec2(-0.55, 0.84), 9.0, 0.085, 1.6);
    tilt += slope(place.xz, vec2(0.28, -0.96), 5.3, 0.050, 2.1);
    tilt += slope(place.xz, vec2(-0.97, -0.22), 2.9, 0.024, 3.0);
    tilt += slope(place.xz, vec2(0.62, -0.78), 1.7, 0.012, 4.1);
    tilt *= 1.0 / (1.0 + distance * 0.03); // far off, waves are smaller than a pixel
    vec3 normal = normalize(vec3(-tilt.x, 1.0, -tilt.y));

    float facing = max(dot(normal, towardsEye), 0.0);
    float edge = 0.04 + 0.96 * pow(1.0 - facing, 5.0);
    vec3 mirrored = reflect(-towardsEye, normal);
    vec3 sky = mix(horizon, zenith, pow(max(mirrored.y, 0.0), 0.6));
    vec3 depths = vec3(0.03, 0.26, 0.30) * (0.25 + 0.9 * (horizon + zenith) * 0.5);
    float glitter = pow(max(dot(mirrored, towardsLight), 0.0), 220.0);

    vec3 colour = mix(depths, sky, edge) + sunlight * glitter;
    gl_FragColor = vec4(mix(gl_Fog.color.rgb, colour, fog), clamp(0.60 + edge + glitter, 0.0, 1.0));
}
